#include "FFmpegError.h"
#include "FFmpegService.h"
#include "LeakGuard.h"
#include "MediaFiles.h"
#include "TemporaryFolder.h"

#include <gmock/gmock.h>

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <future>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

namespace kestrel {
namespace {

using test::AudioDescription;
using test::describeAudio;
using test::LeakGuard;
using test::makeLongOpusFile;
using test::makeOpusFile;
using test::TemporaryFolder;
using ::testing::HasSubstr;

void ignoreProgress(double) {}

class RealConversionTest : public ::testing::Test {
  protected:
    LeakGuard guard;
    TemporaryFolder folder;
    FFmpegService service;
};

TEST_F(RealConversionTest, writesEveryFormatWithItsCodecAndDuration) {
    const FileURL source = folder.file("tone.opus");
    makeOpusFile(source, 2.5);
    const std::tuple<OutputFormat, PCMBitDepth, std::string, std::string> rows[] = {
        {OutputFormat::mp3, PCMBitDepth::twentyFour, "mp3", "fltp"},
        {OutputFormat::aiff, PCMBitDepth::sixteen, "pcm_s16be", "s16"},
        {OutputFormat::aiff, PCMBitDepth::twentyFour, "pcm_s24be", "s32"},
        {OutputFormat::wav, PCMBitDepth::sixteen, "pcm_s16le", "s16"},
        {OutputFormat::wav, PCMBitDepth::twentyFour, "pcm_s24le", "s32"},
    };
    for (const auto& [format, depth, codec, sampleFormat] : rows) {
        const FileURL output =
            folder.file("out/" + codec).appendingPathExtension(format.fileExtension());
        std::vector<double> fractions;
        service.convert(source, output, {.format = format, .bitDepth = depth},
                        [&fractions](double fraction) { fractions.push_back(fraction); });
        const AudioDescription audio = describeAudio(output);
        EXPECT_EQ(audio.codec, codec);
        EXPECT_EQ(audio.sampleFormat, sampleFormat);
        EXPECT_NEAR(audio.seconds, 2.5, 0.1) << codec;
        ASSERT_FALSE(fractions.empty());
        EXPECT_EQ(fractions.back(), 1.0);
    }
}

TEST_F(RealConversionTest, writesSmallerMp3FilesAtLowerQuality) {
    const FileURL source = folder.file("tone.opus");
    makeOpusFile(source, 2);
    std::uintmax_t last = 0;
    for (const double quality : {30.0, 60.0, 82.0, 100.0}) {
        const FileURL output = folder.file(std::to_string(quality) + ".mp3");
        service.convert(source, output, {.quality = quality}, ignoreProgress);
        EXPECT_NEAR(describeAudio(output).seconds, 2, 0.1);
        const std::uintmax_t size = std::filesystem::file_size(output.path());
        EXPECT_GT(size, last) << quality;
        last = size;
    }
}

TEST_F(RealConversionTest, failsWithFfmpegsMessageForAFileThatIsNotAudio) {
    const FileURL source = folder.write("noise.opus", "this is no Ogg stream at all");
    try {
        service.convert(source, folder.file("out.mp3"), {}, ignoreProgress);
        FAIL() << "converted";
    } catch (const FFmpegError& error) {
        EXPECT_EQ(error.which(), FFmpegError::Case::processFailed);
        EXPECT_THAT(error.errorDescription(), HasSubstr("Invalid data found"));
    }
}

TEST_F(RealConversionTest, failsWithFfmpegsMessageForAMissingFile) {
    try {
        service.convert(folder.file("gone.opus"), folder.file("out.mp3"), {}, ignoreProgress);
        FAIL() << "converted";
    } catch (const FFmpegError& error) {
        EXPECT_THAT(error.errorDescription(), HasSubstr("No such file or directory"));
    }
}

TEST_F(RealConversionTest, overwritesOnlyIfAllowed) {
    const FileURL source = folder.file("tone.opus");
    makeOpusFile(source, 1);
    const FileURL output = folder.write("out.wav", "precious");
    try {
        service.convert(source, output, {.format = OutputFormat::wav}, ignoreProgress);
        ADD_FAILURE() << "converted";
    } catch (const FFmpegError& error) {
        EXPECT_THAT(error.errorDescription(), HasSubstr("already exists"));
    }
    EXPECT_EQ(test::contents(output), "precious");
    service.convert(source, output, {.format = OutputFormat::wav, .overwrite = true},
                    ignoreProgress);
    EXPECT_EQ(describeAudio(output).codec, "pcm_s24le");
}

TEST_F(RealConversionTest, failsWhenFfmpegHandlesTheInterrupt) {
    const FileURL source = folder.file("long.opus");
    makeLongOpusFile(source, 20);
    std::promise<void> running;
    bool isRunning = false;
    auto result = std::async(std::launch::async, [&] {
        service.convert(source, folder.file("out.mp3"), {.quality = 100}, [&](double) {
            if (!std::exchange(isRunning, true)) {
                running.set_value();
            }
        });
    });
    ASSERT_EQ(running.get_future().wait_for(std::chrono::seconds(20)), std::future_status::ready);
    service.interruptActiveProcess();
    try {
        result.get();
        FAIL() << "converted";
    } catch (const FFmpegError& error) {
        EXPECT_EQ(error.which(), FFmpegError::Case::processFailed);
        EXPECT_THAT(error.errorDescription(), HasSubstr("Exiting normally, received signal 2."));
    }
}

/// Names that break shells, URL parsers or text decoders.
class HostileNamesTest : public RealConversionTest,
                         public ::testing::WithParamInterface<std::string> {};

TEST_P(HostileNamesTest, workAsSourceAndOutputFolder) {
    const FileURL source = folder.file("in").appendingPathComponent(GetParam() + ".opus");
    makeOpusFile(source, 1);
    const FileURL output =
        folder.file("out").appendingPathComponent(GetParam()).appendingPathComponent("x.wav");
    service.convert(source, output, {.format = OutputFormat::wav}, ignoreProgress);
    EXPECT_NEAR(describeAudio(output).seconds, 1, 0.1);
}

INSTANTIATE_TEST_SUITE_P(, HostileNamesTest,
                         ::testing::Values("two  blanks ", "quotes '\"`", "hash#query?per%20cent%",
                                           "colon:and[brackets]", "file:", "-leading-dash", "-",
                                           "new\nline", "tab\tand\rreturn", "bytes \xff\xfe\xc3(",
                                           "back\\slash", "$HOME;|&<>*", "%d%s", "pipe:1",
                                           "ünïcode 音"));

/// The longest file name: 255 bytes.
TEST_F(RealConversionTest, acceptsASourceNameOf255Bytes) {
    const FileURL source = folder.file(std::string(250, 'n') + ".opus");
    makeOpusFile(source, 1);
    const FileURL output =
        folder.file(std::string(255, 'd')).appendingPathComponent(std::string(251, 'o') + ".wav");
    service.convert(source, output, {.format = OutputFormat::wav}, ignoreProgress);
    EXPECT_NEAR(describeAudio(output).seconds, 1, 0.1);
}

} // namespace
} // namespace kestrel
