#include "ViewModelFixture.h"

#include <gmock/gmock.h>

#include <vector>

namespace kestrel::test {
namespace {

using BatchStartTest = ViewModelTest;

TEST_F(BatchStartTest, refusesAnEmptyQueueFirst) {
    binary.reset();
    EXPECT_EQ(notifications([this] { model->start(); }), 1);
    EXPECT_EQ(model->alertMessage(), "Add at least one Opus file first.");
    EXPECT_FALSE(model->isConverting());
}

TEST_F(BatchStartTest, refusesAMissingDestinationBeforeItLooksForFfmpeg) {
    binary.reset();
    queue({"a.opus"});
    EXPECT_EQ(notifications([this] { model->start(); }), 1);
    EXPECT_EQ(model->alertMessage(), "Choose an output folder first.");
    EXPECT_FALSE(model->isConverting());
}

TEST_F(BatchStartTest, refusesAMissingFfmpegLast) {
    binary.reset();
    queue({"a.opus"});
    chooseDestination();
    EXPECT_EQ(notifications([this] { model->start(); }), 1);
    EXPECT_EQ(model->alertMessage(),
              "FFmpeg was not found. Install it with Homebrew: brew install ffmpeg");
    EXPECT_FALSE(model->isConverting());
    EXPECT_EQ(states(), std::vector{JobState::waiting()});
}

TEST_F(BatchStartTest, reportsOneRefusalAndLooksNoFurther) {
    binary.reset();
    EXPECT_EQ(notifications([this] { model->start(); }), 1);
    EXPECT_EQ(model->alertMessage(), "Add at least one Opus file first.");
    EXPECT_EQ(lookups, 0);
    queue({"a.opus"});
    model->start();
    EXPECT_EQ(lookups, 0);
    chooseDestination();
    EXPECT_EQ(lookups, 0);
    model->start();
    EXPECT_EQ(lookups, 1);
}

TEST_F(BatchStartTest, startsNothingWhileItRuns) {
    queue({"a.opus"});
    chooseDestination();
    runner->setScript("a.opus", [this](const auto&, const auto&) { runner->waitForRelease(); });
    model->start();
    ASSERT_TRUE(runUntil([this] { return isConverting(0); }));
    binary.reset();
    EXPECT_EQ(notifications([this] { model->start(); }), 0);
    EXPECT_FALSE(model->alertMessage());
    runner->release();
    ASSERT_TRUE(runUntil([this] { return !model->isConverting(); }));
    EXPECT_EQ(runner->calls().size(), 1U);
}

TEST_F(BatchStartTest, returnsFromStartBeforeAnythingIsConverted) {
    queue({"a.opus"});
    chooseDestination();
    EXPECT_EQ(notifications([this] { model->start(); }), 1);
    EXPECT_TRUE(model->isConverting());
    EXPECT_EQ(states(), std::vector{JobState::waiting()});
    EXPECT_TRUE(runner->calls().empty());
    ASSERT_TRUE(runUntil([this] { return !model->isConverting(); }));
}

TEST_F(BatchStartTest, acceptsAQueueOfCompletedJobsAndEndsAtOnce) {
    queue({"a.opus"});
    chooseDestination();
    startAndFinish();
    EXPECT_EQ(notifications([this] { startAndFinish(); }), 2);
    EXPECT_EQ(runner->calls().size(), 1U);
}

TEST_F(BatchStartTest, endsAtOnceIfTheQueueIsEmptiedRightAfterStart) {
    queue({"a.opus"});
    chooseDestination();
    model->start();
    model->remove(job(0));
    ASSERT_TRUE(runUntil([this] { return !model->isConverting(); }));
    EXPECT_TRUE(runner->calls().empty());
}

TEST_F(BatchStartTest, includesJobsAddedRightAfterStart) {
    queue({"a.opus"});
    chooseDestination();
    model->start();
    queue({"b.opus"});
    ASSERT_TRUE(runUntil([this] { return !model->isConverting(); }));
    EXPECT_EQ(states(), std::vector(2, JobState::completed()));
}

TEST_F(BatchStartTest, convertsWithTheSettingsAndTheFolderOfTheStart) {
    queue({"a.opus", "b.opus"});
    chooseDestination();
    model->start();
    model->setSettings({.format = OutputFormat::wav});
    panel->answer = std::vector{folder.makeFolder("other")};
    model->chooseDestination();
    ASSERT_TRUE(runUntil([this] { return !model->isConverting(); }));
    ASSERT_EQ(runner->calls().size(), 2U);
    for (const ScriptedRunner::Call& call : runner->calls()) {
        EXPECT_EQ(call.settings, ConversionSettings());
        EXPECT_EQ(call.destination.deletingLastPathComponent(), destination);
    }
}

} // namespace
} // namespace kestrel::test
