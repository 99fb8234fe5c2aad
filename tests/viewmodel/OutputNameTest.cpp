#include "OutputName.h"

#include "TemporaryFolder.h"

#include <gtest/gtest.h>

#include <string>

namespace kestrel {
namespace {

class OutputNameTest : public ::testing::Test {
  protected:
    std::string name(const std::string& source, const ConversionSettings& settings = {}) {
        const FileURL output = outputFile(FileURL("/music/" + source), folder.url(), settings);
        EXPECT_EQ(output.deletingLastPathComponent(), folder.url());
        return std::string(output.lastPathComponent());
    }

    test::TemporaryFolder folder;
};

TEST_F(OutputNameTest, isTheBaseNameAndTheFormat) {
    EXPECT_EQ(name("track.opus"), "track_converted.mp3");
    EXPECT_EQ(name("a.b.ogg"), "a.b_converted.mp3");
    EXPECT_EQ(name("TRACK.OPUS", {.format = OutputFormat::aiff}), "TRACK_converted.aiff");
    EXPECT_EQ(name("x\xff.oga", {.format = OutputFormat::wav}), "x\xff_converted.wav");
    EXPECT_EQ(name(".opus"), "_converted.mp3");
}

TEST_F(OutputNameTest, countsFromTwoWhileTheNameIsTaken) {
    folder.write("song_converted.wav");
    EXPECT_EQ(name("song.opus"), "song_converted.mp3");
    EXPECT_EQ(name("song.opus", {.format = OutputFormat::wav}), "song_converted_2.wav");
    folder.write("song_converted_2.wav");
    folder.write("song_converted_4.wav");
    EXPECT_EQ(name("song.opus", {.format = OutputFormat::wav}), "song_converted_3.wav");
    EXPECT_EQ(name("song.opus", {.format = OutputFormat::wav, .overwrite = true}),
              "song_converted.wav");
}

TEST_F(OutputNameTest, isTakenByAFolderToo) {
    folder.makeFolder("song_converted.mp3");
    EXPECT_EQ(name("song.opus"), "song_converted_2.mp3");
}

TEST_F(OutputNameTest, isFreeIfTheNameIsTooLongToExist) {
    EXPECT_EQ(name(std::string(250, 'n') + ".opus"), std::string(250, 'n') + "_converted.mp3");
}

} // namespace
} // namespace kestrel
