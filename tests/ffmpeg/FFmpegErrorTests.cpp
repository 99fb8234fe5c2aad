#include "FFmpegArguments.h"
#include "FFmpegError.h"
#include "FFmpegService.h"
#include "PlatformError.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <string_view>

namespace kestrel {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;

const FileURL source("/in put/track.opus");
const FileURL destination("/out put/track_converted.mp3");

TEST(FFmpegError, tellsTheUserWhatHappened) {
    EXPECT_EQ(FFmpegError::processFailed("No such file").errorDescription(), "No such file");
    EXPECT_EQ(FFmpegError::processFailed("").errorDescription(),
              "FFmpeg could not convert this file.");
    EXPECT_EQ(FFmpegError::notFound().errorDescription(),
              "FFmpeg was not found. Install it with Homebrew: brew install ffmpeg");
    EXPECT_EQ(FFmpegError::cancelled().errorDescription(), "Conversion cancelled.");
    EXPECT_STREQ(FFmpegError::cancelled().what(), "Conversion cancelled.");
}

TEST(FFmpegError, tellsItsCasesApart) {
    EXPECT_EQ(FFmpegError::processFailed("").which(), FFmpegError::Case::processFailed);
    EXPECT_EQ(FFmpegError::notFound().which(), FFmpegError::Case::notFound);
    EXPECT_EQ(FFmpegError::cancelled().which(), FFmpegError::Case::cancelled);
    EXPECT_NE(FFmpegError::processFailed("a"), FFmpegError::processFailed("b"));
    EXPECT_NE(FFmpegError::processFailed("Conversion cancelled."), FFmpegError::cancelled());
}

TEST(PlatformError, isASentenceThatNamesThePathAndTheReason) {
    const auto denied = std::make_error_code(std::errc::permission_denied);
    const FileURL folder("/music/new %1");
    EXPECT_STREQ(PlatformError::folderNotCreated(folder, denied).what(),
                 "The folder “/music/new %1” could not be created: Permission denied.");
    EXPECT_STREQ(PlatformError::programNotStarted(folder, denied).what(),
                 "The program “/music/new %1” could not be started: Permission denied.");
    EXPECT_STREQ(PlatformError::programLost(folder, denied).what(),
                 "The connection to the program “/music/new %1” was lost: Permission denied.");
    EXPECT_EQ(PlatformError::folderNotCreated(folder, denied).code(), denied);
}

TEST(PlatformError, showsAPathThatIsNotUtf8AsWellAsItCan) {
    const auto denied = std::make_error_code(std::errc::permission_denied);
    EXPECT_THAT(PlatformError::folderNotCreated(FileURL("/a\xff"), denied).what(),
                HasSubstr("“/a\xef\xbf\xbd”"));
}

TEST(FFmpegArguments, convertWithTheInitialSettings) {
    EXPECT_THAT(conversionArguments(source, destination, {}),
                ElementsAre("-n", "-hide_banner", "-i", source.path(), "-map", "0:a:0", "-vn",
                            "-c:a", "libmp3lame", "-q:a", "2", "-id3v2_version", "3",
                            "-map_metadata", "0", "-progress", "pipe:1", "-nostats",
                            destination.path()));
}

TEST(FFmpegArguments, convertToWavOf16Bits) {
    EXPECT_THAT(
        conversionArguments(source, destination,
                            {.format = OutputFormat::wav, .bitDepth = PCMBitDepth::sixteen}),
        ElementsAre("-n", "-hide_banner", "-i", source.path(), "-map", "0:a:0", "-vn", "-c:a",
                    "pcm_s16le", "-map_metadata", "0", "-progress", "pipe:1", "-nostats",
                    destination.path()));
}

TEST(FFmpegArguments, changeInTheFirstAloneWhenTheOutputMayBeReplaced) {
    auto expected = conversionArguments(source, destination, {});
    expected.front() = "-y";
    EXPECT_EQ(conversionArguments(source, destination, {.overwrite = true}), expected);
}

TEST(FFmpegArguments, describeAnInput) {
    EXPECT_THAT(probeArguments(source), ElementsAre("-hide_banner", "-i", source.path()));
}

TEST(FFmpegService, acceptsThreeExtensionsInLowerCase) {
    const auto& supported = FFmpegService::supportedExtensions;
    EXPECT_THAT(supported, ElementsAre("opus", "ogg", "oga"));
    for (const std::string_view other : {"OPUS", "mp3", "", ".opus"}) {
        EXPECT_EQ(std::find(supported.begin(), supported.end(), other), supported.end()) << other;
    }
}

} // namespace
} // namespace kestrel
