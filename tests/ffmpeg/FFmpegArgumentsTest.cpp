#include "FFmpegArguments.h"

#include <gmock/gmock.h>

namespace kestrel {
namespace {

using ::testing::ElementsAre;

const FileURL source("/in put/track.opus");
const FileURL destination("/out put/track_converted.mp3");

TEST(FFmpegArguments, convertWithTheDefaultSettings) {
    EXPECT_THAT(conversionArguments(source, destination, {}),
                ElementsAre("-n", "-hide_banner", "-i", source.path(), "-map", "0:a:0", "-vn",
                            "-c:a", "libmp3lame", "-q:a", "2", "-id3v2_version", "3",
                            "-map_metadata", "0", "-progress", "pipe:1", "-nostats",
                            destination.path()));
}

TEST(FFmpegArguments, convertTo16BitWav) {
    EXPECT_THAT(
        conversionArguments(source, destination,
                            {.format = OutputFormat::wav, .bitDepth = PCMBitDepth::sixteen}),
        ElementsAre("-n", "-hide_banner", "-i", source.path(), "-map", "0:a:0", "-vn", "-c:a",
                    "pcm_s16le", "-map_metadata", "0", "-progress", "pipe:1", "-nostats",
                    destination.path()));
}

TEST(FFmpegArguments, differInTheFirstOnlyWhenOverwriting) {
    auto expected = conversionArguments(source, destination, {});
    expected.front() = "-y";
    EXPECT_EQ(conversionArguments(source, destination, {.overwrite = true}), expected);
}

TEST(FFmpegArguments, probeAnInput) {
    EXPECT_THAT(probeArguments(source), ElementsAre("-hide_banner", "-i", source.path()));
}

} // namespace
} // namespace kestrel
