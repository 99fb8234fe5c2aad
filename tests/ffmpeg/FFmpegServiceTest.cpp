#include "FFmpegService.h"

#include "FFmpegError.h"
#include "LeakGuard.h"
#include "PlatformError.h"
#include "TemporaryFolder.h"
#include "WaitUntil.h"

#include <gmock/gmock.h>

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <filesystem>
#include <future>
#include <optional>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

namespace kestrel {
namespace {

using test::contents;
using test::LeakGuard;
using test::TemporaryFolder;
using test::waitUntil;
using ::testing::ElementsAre;
using ::testing::HasSubstr;

const std::string tenSeconds = "probe err   Duration: 00:00:10.00, start: 0\\n\n";

/// A service whose ffmpeg is the child helper, running the script in the input file.
class FFmpegServiceTest : public ::testing::Test {
  protected:
    FFmpegServiceTest() : service([this] { return binary; }) {}

    void writeScript(const std::string& script) {
        source = folder.write("in put/source.opus", script);
    }

    void convert(const ConversionSettings& settings = {}) {
        service.convert(source, destination, settings,
                        [this](double fraction) { fractions.push_back(fraction); });
    }

    /// Converts and returns the error, or "succeeds".
    std::string outcome() {
        try {
            convert();
            return "succeeds";
        } catch (const FFmpegError& error) {
            switch (error.which()) {
            case FFmpegError::Case::processFailed:
                return "fails: " + error.errorDescription();
            case FFmpegError::Case::notFound:
                return "not found";
            case FFmpegError::Case::cancelled:
                return "cancelled";
            }
        } catch (const PlatformError& error) {
            return std::string("platform: ") + error.what();
        }
        return "unknown";
    }

    std::future<std::string> outcomeInBackground() {
        return std::async(std::launch::async, [this] { return outcome(); });
    }

    bool exists(const std::string& name) const { return folder.has(name); }

    std::string path(const std::string& name) const { return folder.file(name).path(); }

    LeakGuard guard;
    TemporaryFolder folder;
    std::optional<FileURL> binary{FileURL(CHILD_HELPER)};
    FFmpegService service;
    FileURL source = folder.file("missing.opus");
    FileURL destination = folder.file("new/out put/track_converted.mp3");
    std::vector<double> fractions;
};

TEST_F(FFmpegServiceTest, acceptsThreeExtensionsInLowerCase) {
    const auto& supported = FFmpegService::supportedExtensions;
    EXPECT_THAT(supported, ElementsAre("opus", "ogg", "oga"));
    for (const std::string_view other : {"OPUS", "mp3", "", ".opus"}) {
        EXPECT_EQ(std::find(supported.begin(), supported.end(), other), supported.end()) << other;
    }
}

TEST_F(FFmpegServiceTest, reportsProgressFractions) {
    writeScript(
        tenSeconds +
        "convert out frame=1\\nout_time_ms=-23000\\nout_time_ms=5000000\\nprogress=continue\\n\n"
        "convert out out_time_ms=N/A\\nout_time_ms=12000000\\nprogress=end\\n\n");
    EXPECT_EQ(outcome(), "succeeds");
    EXPECT_THAT(fractions, ElementsAre(-0.0023, 0.5, 1.0, 1.0));
}

TEST_F(FFmpegServiceTest, reportsProgressOnTheThreadThatConverts) {
    writeScript(tenSeconds + "convert out out_time_ms=5000000\\nprogress=end\\n\n");
    std::vector<std::thread::id> threads;
    service.convert(source, destination, {},
                    [&threads](double) { threads.push_back(std::this_thread::get_id()); });
    EXPECT_THAT(threads, ElementsAre(std::this_thread::get_id(), std::this_thread::get_id()));
}

TEST_F(FFmpegServiceTest, probesBeforeItCreatesTheFolder) {
    writeScript("probe touch " + path("probing") + "\nprobe wait-for " + path("go") + "\n");
    auto result = outcomeInBackground();
    ASSERT_TRUE(waitUntil([this] { return exists("probing"); }));
    EXPECT_FALSE(exists("new"));
    folder.write("go", "x");
    EXPECT_EQ(result.get(), "succeeds");
    EXPECT_TRUE(exists("new"));
}

TEST_F(FFmpegServiceTest, failsOnARefusedOverwriteWhateverTheStatus) {
    destination = folder.write("track_converted.mp3", "precious");
    for (const char* status : {"0", "1"}) {
        writeScript("convert err File exists\\n\nconvert exit " + std::string(status) + "\n");
        EXPECT_EQ(outcome(), "fails: File exists") << status;
    }
}

TEST_F(FFmpegServiceTest, succeedsOnStatusZeroUnlessRefused) {
    writeScript("convert err message\\n\n");
    EXPECT_EQ(outcome(), "succeeds");
    destination = folder.write("track_converted.mp3", "precious");
    EXPECT_NO_THROW(convert({.overwrite = true}));
    writeScript("convert out progress=end\\n\n");
    EXPECT_EQ(outcome(), "succeeds");
    writeScript("convert write-output written all the same\n");
    EXPECT_EQ(outcome(), "succeeds");
}

TEST_F(FFmpegServiceTest, reportsOnlyTheEndWithoutADuration) {
    for (const char* probe : {"", "probe err Duration: 00:00:00.00\\n\n", "probe exit 9\n"}) {
        fractions.clear();
        writeScript(std::string(probe) + "convert out out_time_ms=5000000\\nprogress=end\\n\n");
        EXPECT_EQ(outcome(), "succeeds");
        EXPECT_THAT(fractions, ElementsAre(1.0)) << probe;
    }
}

TEST_F(FFmpegServiceTest, reportsOnlyTheEndWhenTheProbeIsLost) {
    writeScript(tenSeconds + "probe hold-err " + path("go") +
                "\nconvert out out_time_ms=5000000\\nprogress=end\\n\n");
    auto result = outcomeInBackground();
    // Reaps the probe before the service does, while a grandchild keeps its stderr open.
    EXPECT_TRUE(waitUntil([] { return ::waitpid(-1, nullptr, WNOHANG) > 0; }));
    folder.write("go", "x");
    EXPECT_EQ(result.get(), "succeeds");
    EXPECT_THAT(fractions, ElementsAre(1.0));
}

TEST_F(FFmpegServiceTest, reportsOnlyWhatFfmpegReports) {
    writeScript(tenSeconds + "convert out out_time_ms=5000000\\n\n");
    EXPECT_EQ(outcome(), "succeeds");
    EXPECT_THAT(fractions, ElementsAre(0.5));
}

TEST_F(FFmpegServiceTest, parsesProgressInAnyChunks) {
    std::string script = tenSeconds;
    for (const char byte : std::string("out_time_ms=2500000")) {
        script += std::string("convert out ") + byte + "\n";
    }
    writeScript(script + "convert out \\r\\nprogress=e\nconvert out nd");
    EXPECT_EQ(outcome(), "succeeds");
    EXPECT_THAT(fractions, ElementsAre(0.25, 1.0));
}

TEST_F(FFmpegServiceTest, passesArgumentsToTheProbeAndTheConversion) {
    writeScript("probe record-arguments " + path("probe") + "\n" + "convert record-arguments " +
                path("convert") + "\n");
    convert({.format = OutputFormat::wav, .bitDepth = PCMBitDepth::sixteen, .overwrite = true});
    const std::string zero(1, '\0');
    const auto joined = [&zero](const std::vector<std::string>& arguments) {
        std::string text;
        for (const std::string& argument : arguments) {
            text += argument + zero;
        }
        return text + "\n";
    };
    EXPECT_EQ(contents(folder.file("probe")), joined({"-hide_banner", "-i", source.path()}));
    EXPECT_EQ(contents(folder.file("convert")),
              joined({"-y", "-hide_banner", "-i", source.path(), "-map", "0:a:0", "-vn", "-c:a",
                      "pcm_s16le", "-map_metadata", "0", "-progress", "pipe:1", "-nostats",
                      destination.path()}));
}

TEST_F(FFmpegServiceTest, lowersThePriorityOfTheProbeOnly) {
    const int own = ::getpriority(PRIO_PROCESS, 0);
    writeScript("probe report " + path("probe") + "\nconvert report " + path("convert") + "\n");
    EXPECT_EQ(outcome(), "succeeds");
    constexpr int lowest = 19;
    const int lower = std::min(own + 5, lowest);
    EXPECT_THAT(contents(folder.file("probe")), HasSubstr("nice " + std::to_string(lower) + "\n"));
    EXPECT_THAT(contents(folder.file("convert")), HasSubstr("nice " + std::to_string(own) + "\n"));
}

TEST_F(FFmpegServiceTest, createsTheOutputFolderBeforeConverting) {
    writeScript("convert write-output made\n");
    EXPECT_EQ(outcome(), "succeeds");
    EXPECT_EQ(contents(destination), "made");
    std::filesystem::remove(destination.path());
    EXPECT_EQ(outcome(), "succeeds");
}

TEST_F(FFmpegServiceTest, writesToAFolderDatedAfter2038) {
    writeScript(tenSeconds);
    const timespec date{.tv_sec = 2'208'988'800, .tv_nsec = 0}; // 2040
    const std::array dates{date, date};
    const FileURL output = destination.deletingLastPathComponent();
    std::filesystem::create_directories(output.path());
    ASSERT_EQ(::utimensat(AT_FDCWD, output.path().c_str(), dates.data(), 0), 0);
    EXPECT_EQ(outcome(), "succeeds");
    destination = output.appendingPathComponent("new/out.mp3");
    ASSERT_EQ(::utimensat(AT_FDCWD, output.path().c_str(), dates.data(), 0), 0);
    EXPECT_EQ(outcome(), "succeeds");
    EXPECT_EQ(::access(destination.deletingLastPathComponent().path().c_str(), W_OK), 0);
}

TEST_F(FFmpegServiceTest, failsWithAPlatformErrorWhenTheFolderCannotBeCreated) {
    writeScript("convert touch " + path("started") + "\n");
    folder.write("new", "a file");
    EXPECT_EQ(outcome(), "platform: The folder “" + path("new/out put") +
                             "” could not be created: Not a directory.");
    EXPECT_FALSE(exists("started"));
}

TEST_F(FFmpegServiceTest, throwsNotFoundBeforeAnySideEffect) {
    writeScript("probe touch " + path("probed") + "\n");
    binary.reset();
    EXPECT_EQ(outcome(), "not found");
    EXPECT_FALSE(exists("probed"));
    EXPECT_FALSE(exists("new"));
}

TEST_F(FFmpegServiceTest, failsWithAPlatformErrorWhenFfmpegCannotBeStarted) {
    writeScript("");
    binary = folder.write("broken-ffmpeg", "");
    EXPECT_EQ(outcome(), "platform: The program “" + path("broken-ffmpeg") +
                             "” could not be started: Permission denied.");
    service.interruptActiveProcess();
    binary = FileURL(CHILD_HELPER);
    EXPECT_EQ(outcome(), "succeeds");
}

TEST_F(FFmpegServiceTest, failsWithTheLastEightLinesOfStderr) {
    std::string script;
    std::string expected = "fails: ";
    for (int i = 1; i <= 20; ++i) {
        script += "convert err line " + std::to_string(i) + "\\n\\n\n";
        expected += i > 12 ? (i > 13 ? "\n" : "") + ("line " + std::to_string(i)) : "";
    }
    writeScript(script + "convert exit 1\n");
    EXPECT_EQ(outcome(), expected);
}

TEST_F(FFmpegServiceTest, failsWithAGenericMessageIfStderrIsEmpty) {
    writeScript("convert exit 234\n");
    EXPECT_EQ(outcome(), "fails: FFmpeg could not convert this file.");
}

TEST_F(FFmpegServiceTest, ignoresStderrOnSuccess) {
    writeScript("convert err Error: not really\\n\n");
    EXPECT_EQ(outcome(), "succeeds");
}

TEST_F(FFmpegServiceTest, isCancelledByAnySignalThatKillsTheChild) {
    for (const char* signal : {"2", "9", "11", "15"}) {
        writeScript(std::string("convert err message\\n\nconvert raise ") + signal + "\n");
        EXPECT_EQ(outcome(), "cancelled") << signal;
    }
}

TEST_F(FFmpegServiceTest, isCancelledWhenTheInterruptKillsTheChild) {
    writeScript(tenSeconds + "convert touch " + path("up") + "\nconvert block\n");
    auto result = outcomeInBackground();
    ASSERT_TRUE(waitUntil([this] { return exists("up"); }));
    service.interruptActiveProcess();
    EXPECT_EQ(result.get(), "cancelled");
}

TEST_F(FFmpegServiceTest, failsWhenTheChildHandlesTheInterrupt) {
    writeScript("convert on-interrupt 255 progress=end\\n\nconvert err Exiting normally\\n\n"
                "convert touch " +
                path("up") + "\nconvert block\n");
    auto result = outcomeInBackground();
    ASSERT_TRUE(waitUntil([this] { return exists("up"); }));
    service.interruptActiveProcess();
    EXPECT_EQ(result.get(), "fails: Exiting normally");
    EXPECT_THAT(fractions, ElementsAre(1.0));
}

TEST_F(FFmpegServiceTest, interruptsTheChildWhenItIsLaunchedIfAskedDuringTheProbe) {
    writeScript("probe touch " + path("probing") + "\nprobe wait-for " + path("go") + "\n" +
                tenSeconds + "convert block\n");
    auto result = outcomeInBackground();
    ASSERT_TRUE(waitUntil([this] { return exists("probing"); }));
    service.interruptActiveProcess();
    folder.write("go", "x");
    EXPECT_EQ(result.get(), "cancelled");
    writeScript("");
    EXPECT_EQ(outcome(), "succeeds");
}

TEST_F(FFmpegServiceTest, forgetsAnInterruptWithTheConversionThatNeverLaunchedAChild) {
    writeScript("probe touch " + path("probing") + "\nprobe wait-for " + path("go") + "\n");
    destination = FileURL(folder.write("file", "x").path() + "/x.mp3");
    auto result = outcomeInBackground();
    ASSERT_TRUE(waitUntil([this] { return exists("probing"); }));
    service.interruptActiveProcess();
    folder.write("go", "x");
    EXPECT_THAT(result.get(), HasSubstr("platform"));
    destination = folder.file("out/x.mp3");
    writeScript("");
    EXPECT_EQ(outcome(), "succeeds");
}

TEST_F(FFmpegServiceTest, remembersAnInterruptFromThePreparationOn) {
    service.prepareConversion();
    service.interruptActiveProcess();
    writeScript("convert block\n");
    EXPECT_EQ(outcome(), "cancelled");
    service.prepareConversion();
    writeScript("");
    EXPECT_EQ(outcome(), "succeeds");
}

TEST_F(FFmpegServiceTest, ignoresAnInterruptWhileIdle) {
    service.interruptActiveProcess();
    writeScript("");
    EXPECT_EQ(outcome(), "succeeds");
    service.interruptActiveProcess();
    EXPECT_EQ(outcome(), "succeeds");
}

TEST_F(FFmpegServiceTest, drainsBothPipesWhateverTheChildWrites) {
    writeScript("probe flood-err 3000000\nprobe flood-out 3000000\n" + tenSeconds +
                "convert flood-err 3000000\nconvert flood-out 3000000\nconvert flood-err 3000000\n"
                "convert out \\nprogress=end\\n\nconvert exit 1\n");
    EXPECT_THAT(outcome(), HasSubstr("fails: xxxx"));
    EXPECT_THAT(fractions, ElementsAre(1.0));
}

TEST_F(FFmpegServiceTest, waitsForAChildThatClosesItsPipesEarly) {
    writeScript(
        "convert err last line\\n\nconvert close-out\nconvert close-err\nconvert wait-for " +
        path("go") + "\nconvert exit 5\n");
    auto result = outcomeInBackground();
    folder.write("go", "x");
    EXPECT_EQ(result.get(), "fails: last line");
}

TEST_F(FFmpegServiceTest, waitsForAGrandchildThatHoldsThePipes) {
    for (const char* hold : {"hold-out ", "hold-err "}) {
        std::filesystem::remove(path("go"));
        writeScript(std::string("convert ") + hold + path("go") + "\nconvert touch " + path("up") +
                    "\nconvert out progress=end\\n\n");
        auto result = outcomeInBackground();
        ASSERT_TRUE(waitUntil([this] { return exists("up"); }));
        folder.write("go", "x");
        EXPECT_EQ(result.get(), "succeeds") << hold;
    }
}

TEST_F(FFmpegServiceTest, rethrowsFromTheProgressHandlerAndIsIdleAfterwards) {
    writeScript("convert out progress=end\\n\n");
    EXPECT_THROW(service.convert(source, destination, {},
                                 [](double) { throw std::runtime_error("handler"); }),
                 std::runtime_error);
    EXPECT_EQ(outcome(), "succeeds");
}

} // namespace
} // namespace kestrel
