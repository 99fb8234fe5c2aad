#include "ViewModelFixture.h"

#include "FFmpegService.h"
#include "MediaFiles.h"

#include <gmock/gmock.h>

#include <filesystem>
#include <memory>
#include <string>

namespace kestrel::test {
namespace {

using ::testing::HasSubstr;

/// The view model with the real service and the real ffmpeg.
class RealBatchTest : public ViewModelTest {
  protected:
    RealBatchTest() {
        binary = FFmpegService::locateBinary();
        makeModel(std::make_shared<FFmpegService>());
    }

    void convertAll() {
        chooseDestination();
        model->start();
        ASSERT_TRUE(runUntil([this] { return !model->isConverting(); }, 90'000));
    }
};

TEST_F(RealBatchTest, convertsEighteenOfTwentyFilesAroundACorruptAndAMissingOne) {
    const FileURL tone = folder.file("tone.bin");
    makeOpusFile(tone, 1);
    for (int i = 1; i <= 20; ++i) {
        const FileURL file = folder.file("in/" + std::to_string(i) + ".opus");
        std::filesystem::create_directories(file.deletingLastPathComponent().path());
        if (i == 9) {
            folder.write("in/9.opus", "no audio");
        } else if (i == 12) {
            queue({"in/12.opus"});
        } else {
            std::filesystem::copy_file(tone.path(), file.path());
        }
    }
    model->add({folder.file("in")});
    ASSERT_EQ(names().size(), 20U);
    convertAll();

    EXPECT_EQ(model->completedCount(), 18U);
    for (const ConversionJob& job : model->jobs()) {
        const std::string base(job.source().baseName());
        const FileURL output = destination.appendingPathComponent(base + "_converted.mp3");
        if (base == "9") {
            EXPECT_THAT(job.state.message(), HasSubstr("Invalid data found"));
        } else if (base == "12") {
            EXPECT_THAT(job.state.message(), HasSubstr("No such file or directory"));
        } else {
            EXPECT_EQ(job.state, JobState::completed()) << base;
            EXPECT_NEAR(describeAudio(output).seconds, 1, 0.1) << base;
            continue;
        }
        EXPECT_TRUE(job.state.is(JobState::Case::failed));
        EXPECT_FALSE(std::filesystem::exists(output.path()));
    }
}

TEST_F(RealBatchTest, numbersTheOutputIfTheNameIsTaken) {
    makeOpusFile(folder.file("a/x.opus"), 1);
    makeOpusFile(folder.file("b/x.ogg"), 1);
    model->add({folder.file("a"), folder.file("b")});
    convertAll();
    EXPECT_EQ(model->completedCount(), 2U);
    EXPECT_TRUE(folder.has("out/x_converted.mp3"));
    EXPECT_TRUE(folder.has("out/x_converted_2.mp3"));
}

TEST_F(RealBatchTest, endsWithAFailedJobWhenTheRealFfmpegIsCancelled) {
    makeOpusFile(folder.file("1.opus"), 1);
    makeLongOpusFile(folder.file("2.opus"), 20);
    makeOpusFile(folder.file("3.opus"), 1);
    model->add({folder.file("1.opus"), folder.file("2.opus"), folder.file("3.opus")});
    chooseDestination();
    model->start();
    ASSERT_TRUE(runUntil([this] { return job(1).progress > 0; }, 60'000));
    model->cancel();
    ASSERT_TRUE(runUntil([this] { return !model->isConverting(); }));
    EXPECT_EQ(job(0).state, JobState::completed());
    EXPECT_TRUE(job(1).state.is(JobState::Case::failed));
    EXPECT_THAT(job(1).state.message(), HasSubstr("received signal 2"));
    EXPECT_EQ(job(2).state, JobState::waiting());
}

TEST_F(RealBatchTest, failsWithAMessageIfTheOutputFolderCannotBeCreated) {
    makeOpusFile(folder.file("1.opus"), 1);
    model->add({folder.file("1.opus")});
    destination = folder.write("file", "in the way").appendingPathComponent("out");
    convertAll();
    EXPECT_EQ(job(0).state.message(),
              "The folder “" + destination.path() + "” could not be created: Not a directory.");
}

} // namespace
} // namespace kestrel::test
