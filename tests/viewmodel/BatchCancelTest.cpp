#include "ViewModelFixture.h"

#include "FFmpegError.h"
#include "FFmpegService.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace kestrel::test {
namespace {

/// A constant: with extended-precision FPU registers, a literal differs from the stored double.
constexpr double reached = 0.4;

class BatchCancelTest : public ViewModelTest {
  protected:
    BatchCancelTest() {
        queue({"1.opus", "2.opus", "3.opus"});
        chooseDestination();
    }

    /// Makes the second conversion report `reached`, wait for the interrupt and call `end`; cancels
    /// the batch there and waits for its end.
    void cancelDuringTheSecond(const std::function<void()>& end) {
        runner->setScript("2.opus", [this, end](const auto&, const auto& onProgress) {
            onProgress(reached);
            runner->waitForInterrupt();
            end();
        });
        model->start();
        ASSERT_TRUE(runUntil([this] { return job(1).progress == reached; }));
        EXPECT_EQ(notifications([this] { model->cancel(); }), 0);
        EXPECT_TRUE(model->isConverting());
        ASSERT_TRUE(runUntil([this] { return !model->isConverting(); }));
        EXPECT_EQ(runner->calls().size(), 2U);
        EXPECT_FALSE(model->alertMessage());
    }
};

TEST_F(BatchCancelTest, marksTheJobCancelledIfItsChildWasKilled) {
    cancelDuringTheSecond([] { throw FFmpegError::cancelled(); });
    EXPECT_EQ(states(),
              (std::vector{JobState::completed(), JobState::cancelled(), JobState::waiting()}));
    EXPECT_EQ(job(1).progress, reached);
}

TEST_F(BatchCancelTest, marksTheJobFailedIfItsChildHandledTheInterrupt) {
    cancelDuringTheSecond([] { throw FFmpegError::processFailed("Exiting normally"); });
    EXPECT_EQ(states(), (std::vector{JobState::completed(), JobState::failed("Exiting normally"),
                                     JobState::waiting()}));
    EXPECT_EQ(job(1).progress, reached);
}

TEST_F(BatchCancelTest, marksTheJobCompletedIfItsChildHadFinished) {
    cancelDuringTheSecond([] {});
    EXPECT_EQ(states(),
              (std::vector{JobState::completed(), JobState::completed(), JobState::waiting()}));
}

TEST_F(BatchCancelTest, stopsTheBatchIfAChildDiesByAnUnrequestedSignal) {
    runner->setScript("2.opus", [](const auto&, const auto&) { throw FFmpegError::cancelled(); });
    startAndFinish();
    EXPECT_EQ(states(),
              (std::vector{JobState::completed(), JobState::cancelled(), JobState::waiting()}));
    EXPECT_EQ(runner->interrupts(), 0);
}

TEST_F(BatchCancelTest, endsWithoutAFatalErrorAlthoughTheQueueHasBecomeShorter) {
    runner->setScript("1.opus", [this](const auto&, const auto& onProgress) {
        onProgress(reached);
        runner->waitForInterrupt();
        throw FFmpegError::processFailed("Exiting normally");
    });
    model->start();
    ASSERT_TRUE(runUntil([this] { return job(0).progress == reached; }));
    model->remove(job(2));
    model->remove(job(1));
    model->cancel();
    ASSERT_TRUE(runUntil([this] { return !model->isConverting(); }));
    EXPECT_EQ(states(), std::vector{JobState::failed("Exiting normally")});
}

TEST_F(BatchCancelTest, requestsTheStopBeforeTheInterrupt) {
    runner->setScript("1.opus", [this](const auto&, const auto& onProgress) {
        onProgress(reached);
        runner->waitForInterrupt();
    });
    // The conversion that the interrupt ends is recorded before cancel() returns.
    runner->onInterrupt = [this] { runUntil([this] { return !model->isConverting(); }); };
    model->start();
    ASSERT_TRUE(runUntil([this] { return job(0).progress == reached; }));
    model->cancel();
    EXPECT_FALSE(model->isConverting());
    EXPECT_EQ(runner->calls().size(), 1U);
}

TEST_F(BatchCancelTest, stopsBeforeTheFirstJobIfRequestedRightAfterStart) {
    model->start();
    model->cancel();
    ASSERT_TRUE(runUntil([this] { return !model->isConverting(); }));
    EXPECT_TRUE(runner->calls().empty());
    EXPECT_EQ(states(), std::vector(3, JobState::waiting()));
}

TEST_F(BatchCancelTest, hasNoEffectWhileIdleNorOnTheNextBatch) {
    EXPECT_EQ(notifications([this] { model->cancel(); }), 0);
    startAndFinish();
    EXPECT_EQ(model->completedCount(), 3U);
    model->cancel();
    queue({"4.opus"});
    startAndFinish();
    EXPECT_EQ(model->completedCount(), 4U);
    EXPECT_EQ(runner->interrupts(), 2);
}

TEST_F(BatchCancelTest, letsTheNextBatchConvertTheRemainingJobs) {
    cancelDuringTheSecond([] { throw FFmpegError::cancelled(); });
    runner->setScript("2.opus", nullptr);
    startAndFinish();
    EXPECT_EQ(states(), std::vector(3, JobState::completed()));
    EXPECT_EQ(runner->calls().size(), 4U);
}

/// The same with the real service and a helper process in place of ffmpeg.
class BatchCancelWithChildTest : public ViewModelTest {
  protected:
    BatchCancelWithChildTest() {
        binary = FileURL(CHILD_HELPER);
        makeModel(std::make_shared<FFmpegService>([this] { return binary; }));
    }

    void cancelDuringTheSecond(const std::string& script) {
        model->add(
            {folder.write("1.opus", "convert exit 0\n"),
             folder.write("2.opus", "probe err Duration: 00:00:10.00\\n\n" + script +
                                        "convert out out_time_ms=4000000\\n\nconvert block\n"),
             folder.write("3.opus", "convert exit 0\n")});
        chooseDestination();
        model->start();
        ASSERT_TRUE(runUntil([this] { return job(1).progress == reached; }));
        model->cancel();
        ASSERT_TRUE(runUntil([this] { return !model->isConverting(); }));
    }
};

TEST_F(BatchCancelWithChildTest, marksTheJobCancelledIfTheInterruptKillsTheChild) {
    cancelDuringTheSecond("");
    EXPECT_EQ(states(),
              (std::vector{JobState::completed(), JobState::cancelled(), JobState::waiting()}));
    EXPECT_EQ(job(1).progress, reached);
}

TEST_F(BatchCancelWithChildTest, marksTheJobFailedIfTheChildHandlesTheInterrupt) {
    cancelDuringTheSecond("convert on-interrupt 255 \nconvert err received signal 2\\n\n");
    EXPECT_EQ(states(), (std::vector{JobState::completed(), JobState::failed("received signal 2"),
                                     JobState::waiting()}));
}

} // namespace
} // namespace kestrel::test
