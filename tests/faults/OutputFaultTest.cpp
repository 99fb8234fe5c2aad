#include "FaultFixture.h"
#include "PeakMemory.h"

#include <gmock/gmock.h>

#include <cstddef>
#include <cstdint>
#include <iostream>
#include <ostream>
#include <string>
#include <string_view>
#include <tuple>
#include <vector>

// Unusual ffmpeg output: floods, overlong lines, invalid bytes and numbers.

namespace kestrel::test {
namespace {

using ::testing::Combine;
using ::testing::Le;
using ::testing::Values;
using namespace std::string_view_literals;

constexpr std::uint64_t mebibyte = 1024UL * 1024;
constexpr std::uint64_t flood = 128 * mebibyte;
constexpr std::uint64_t longFlood = 8 * flood;

struct Flood {
    const char* name;
    /// The script command, without the byte count that follows it.
    const char* command;

    friend std::ostream& operator<<(std::ostream& out, const Flood& row) { return out << row.name; }
};

class FloodTest : public FaultTest,
                  public ::testing::WithParamInterface<std::tuple<std::uint64_t, Flood>> {};

TEST_P(FloodTest, isReadToItsEndWithBoundedMemory) {
    const auto& [bytesAtFullSpeed, row] = GetParam();
    // Sanitizers slow down every byte.
    const std::uint64_t bytes = PeakMemory::isBlurred() ? flood / 4 : bytesAtFullSpeed;
    const PeakMemory memory;
    EXPECT_EQ(outcome(row.command + std::to_string(bytes) + "\n" +
                      "convert out progress=end\\n\nconvert write-output fine\n"),
              "completed");
    EXPECT_EQ(outcomeOf(1), "completed");
    EXPECT_EQ(contents(output("1_converted.mp3")), "fine");
    const std::size_t growth = memory.growth();
    std::cout << "memory grew by " << growth / 1024 << " KiB\n";
    if (!PeakMemory::isBlurred()) {
        EXPECT_THAT(growth, Le(16 * mebibyte));
    }
}

const auto floods =
    Values(Flood{"progress", "convert flood-out "}, Flood{"diagnostics", "convert flood-err "},
           Flood{"both", "convert flood-both "}, Flood{"diagnosticsOfTheProbe", "probe flood-err "},
           Flood{"outputOfTheProbe", "probe flood-out "});

std::string nameOf(const ::testing::TestParamInfo<FloodTest::ParamType>& row) {
    return std::get<Flood>(row.param).name;
}

INSTANTIATE_TEST_SUITE_P(OutputFaults, FloodTest, Combine(Values(flood), floods), nameOf);
INSTANTIATE_TEST_SUITE_P(LongOutputFaults, FloodTest, Combine(Values(longFlood), floods), nameOf);

TEST_F(FaultTest, skipsAProgressLineOf200Megabytes) {
    const PeakMemory memory;
    EXPECT_EQ(outcome("convert repeat-out 200000000 x\nconvert out \\nprogress=end\\n\n"
                      "convert write-output fine\n"),
              "completed");
    EXPECT_EQ(job(0).progress, 1.0);
    std::cout << "memory grew by " << memory.growth() / 1024 << " KiB\n";
    if (!PeakMemory::isBlurred()) {
        EXPECT_THAT(memory.growth(), Le(16 * mebibyte));
    }
}

TEST_F(FaultTest, showsAFailureWhoseLastStderrLineHas200Megabytes) {
    const std::size_t length = PeakMemory::isBlurred() ? 20'000'000 : 200'000'000;
    const PeakMemory memory;
    queueScript("convert err first\\n\nconvert repeat-err " + std::to_string(length) +
                " x\nconvert exit 1\n");
    queueHarmless();
    convertAll();
    std::cout << "memory grew by " << memory.growth() / 1024 << " KiB\n";
    EXPECT_EQ(job(0).state.message().size(), length + 6);
    EXPECT_TRUE(job(0).state.message().starts_with("first\nxxx"));
    EXPECT_EQ(outcomeOf(1), "completed");
}

TEST_F(FaultTest, keepsNoMoreReportsThanTheWindowCanFollow) {
    // Far more reports than the window can show, as fast as the pipe takes them.
    const std::uint64_t reports = PeakMemory::isBlurred() ? 50'000 : 500'000;
    const PeakMemory memory;
    EXPECT_EQ(outcome("probe err Duration: 00:00:10.00\\n\nconvert repeat-out " +
                      std::to_string(reports) +
                      " out_time_ms=5000000\\n\nconvert out out_time_ms=7500000\\n\n"),
              "completed");
    std::cout << "memory grew by " << memory.growth() / 1024 << " KiB\n";
    if (!PeakMemory::isBlurred()) {
        EXPECT_THAT(memory.growth(), Le(8 * mebibyte));
    }
}

struct OddOutput {
    const char* name;
    const char* script;
    std::string_view outcome;
    double progress;

    friend std::ostream& operator<<(std::ostream& out, const OddOutput& row) {
        return out << row.name;
    }
};

class OddOutputTest : public FaultTest, public ::testing::WithParamInterface<OddOutput> {};

TEST_P(OddOutputTest, hasTheExpectedOutcomeAndProgress) {
    std::vector<double> seen;
    QObject::connect(model.get(), &ConverterViewModel::willChange, model.get(), [this, &seen] {
        if (!model->jobs().empty()) {
            seen.push_back(job(0).progress);
        }
    });
    EXPECT_EQ(outcome(std::string("probe err Duration: 00:00:10.00\\n\n") + GetParam().script),
              GetParam().outcome);
    EXPECT_THAT(seen, ::testing::Contains(GetParam().progress));
    EXPECT_EQ(outcomeOf(1), "completed");
}

INSTANTIATE_TEST_SUITE_P(
    OutputFaults, OddOutputTest,
    Values(OddOutput{"nulBytes",
                     "convert out \\x00\\x00\\nout_time_ms=5000000\\nout_time_ms=7\\x00\\n\n"
                     "convert err a\\x00b\\n\nconvert exit 1\n",
                     "failed: a\0b"sv, 0.5},
           OddOutput{"invalidUtf8",
                     "convert out \\xff\\xfe=\\xc3\\nout_time_ms=5000000\\n\n"
                     "convert err gr\\xfc\\xc3\\xbc\\n\nconvert exit 1\n",
                     "failed: gr\uFFFDü", 0.5},
           OddOutput{"carriageReturnsOnly",
                     "convert out frame=1\\rout_time_ms=5000000\\rprogress=continue\\r\n"
                     "convert err one\\rtwo\\r\nconvert exit 1\n",
                     "failed: one\rtwo\r", 0.5},
           OddOutput{"singleBytes",
                     "convert trickle-out frame=1\\nout_time_ms=5000000\\r\\nprogress=continue\\n\n"
                     "convert exit 0\n",
                     "completed", 0.5},
           OddOutput{"noLineEnd", "convert out out_time_ms=2500000\nconvert exit 0\n", "completed",
                     0.25},
           OddOutput{"nothing", "convert exit 0\n", "completed", 0},
           OddOutput{"noNumbers",
                     "convert out out_time_ms=nan\\nout_time_ms=inf\\nout_time_ms=\\n"
                     "out_time_ms=0x5\\nout_time_ms=1e999\\nout_time_ms=N/A\\n\nconvert exit 0\n",
                     "completed", 0},
           OddOutput{"beforeTheStart", "convert out out_time_ms=-5000000\\n\nconvert exit 0\n",
                     "completed", -0.5},
           OddOutput{"beyondTheEnd", "convert out out_time_ms=50000000\\n\nconvert exit 0\n",
                     "completed", 1}),
    [](const auto& row) { return std::string(row.param.name); });

} // namespace
} // namespace kestrel::test
