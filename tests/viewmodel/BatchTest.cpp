#include "ViewModelFixture.h"

#include "FFmpegError.h"
#include "PlatformError.h"

#include <QThread>

#include <gmock/gmock.h>

#include <cstdio>
#include <filesystem>
#include <functional>
#include <memory>
#include <new>
#include <string>
#include <system_error>
#include <utility>
#include <vector>

namespace kestrel::test {
namespace {

using ::testing::ElementsAre;
using BatchTest = ViewModelTest;

TEST_F(BatchTest, reportsBadAllocAsAnErrorMessage) {
    queue({"a.opus", "b.opus"});
    chooseDestination();
    runner->setScript("a.opus", [](const auto&, const auto&) { throw std::bad_alloc(); });
    startAndFinish();
    EXPECT_EQ(states(), (std::vector{JobState::failed("There is not enough memory."),
                                     JobState::completed()}));
}

TEST_F(BatchTest, endsWithTheJobFailedIfTheMainThreadRunsOutOfMemory) {
    queue({"1.opus", "2.opus"});
    chooseDestination();
    runner->onPrepare = [] { throw std::bad_alloc(); };
    startAndFinish();
    EXPECT_EQ(states(),
              (std::vector{JobState::failed("There is not enough memory."), JobState::waiting()}));
    EXPECT_TRUE(runner->calls().empty());
    runner->onPrepare = nullptr;
    startAndFinish();
    EXPECT_EQ(states(), std::vector(2, JobState::completed()));
}

TEST_F(BatchTest, convertsTheQueueInItsOrder) {
    queue({"b.opus", "a.ogg", "c.oga"});
    chooseDestination();
    startAndFinish();
    const auto calls = runner->calls();
    ASSERT_EQ(calls.size(), 3U);
    EXPECT_EQ(calls[0].source, folder.file("b.opus"));
    EXPECT_EQ(calls[0].destination, folder.file("out/b_converted.mp3"));
    EXPECT_EQ(calls[0].settings, ConversionSettings());
    EXPECT_EQ(calls[1].destination, folder.file("out/a_converted.mp3"));
    EXPECT_EQ(calls[2].destination, folder.file("out/c_converted.mp3"));
    EXPECT_EQ(states(), std::vector(3, JobState::completed()));
    for (const ConversionJob& done : model->jobs()) {
        EXPECT_EQ(done.progress, 1.0);
        EXPECT_FALSE(done.duration);
    }
}

TEST_F(BatchTest, emitsWillChangeForEveryFieldItWrites) {
    queue({"a.opus"});
    chooseDestination();
    runner->setScript("a.opus", [](const auto&, const auto& onProgress) {
        onProgress(0.25);
        onProgress(0.5);
    });
    // Converting on; state, progress 0; two reports; state, progress 1; converting off.
    EXPECT_EQ(notifications([this] { startAndFinish(); }), 1 + 2 + 2 + 2 + 1);
}

TEST_F(BatchTest, emitsWillChangeBeforeEveryWrite) {
    queue({"a.opus"});
    chooseDestination();
    runner->setScript("a.opus", [](const auto&, const auto& onProgress) { onProgress(0.5); });
    std::vector<std::pair<JobState, double>> before;
    QObject::connect(model.get(), &ConverterViewModel::willChange, model.get(),
                     [&] { before.emplace_back(job(0).state, job(0).progress); });
    startAndFinish();
    const std::vector<std::pair<JobState, double>> expected{
        {JobState::waiting(), 0},    {JobState::waiting(), 0},      {JobState::converting(), 0},
        {JobState::converting(), 0}, {JobState::converting(), 0.5}, {JobState::completed(), 0.5},
        {JobState::completed(), 1.0}};
    EXPECT_EQ(before, expected);
}

TEST_F(BatchTest, writesOnTheMainThreadAndConvertsOnAWorker) {
    queue({"a.opus"});
    chooseDestination();
    QThread* const mainThread = QThread::currentThread();
    bool isOnWorker = false;
    runner->setScript("a.opus", [&](const auto&, const auto& onProgress) {
        isOnWorker = QThread::currentThread() != mainThread;
        onProgress(0.5);
    });
    QObject::connect(model.get(), &ConverterViewModel::willChange,
                     [mainThread] { EXPECT_EQ(QThread::currentThread(), mainThread); });
    startAndFinish();
    EXPECT_TRUE(isOnWorker);
}

TEST_F(BatchTest, appliesProgressReportsInOrderAndUnchanged) {
    queue({"a.opus"});
    chooseDestination();
    runner->setScript("a.opus", [](const auto&, const auto& onProgress) {
        for (const double fraction : {-0.5, 0.9, 0.1, 1.0, 0.25}) {
            onProgress(fraction);
        }
    });
    std::vector<double> seen;
    QObject::connect(model.get(), &ConverterViewModel::willChange, model.get(),
                     [&] { seen.push_back(job(0).progress); });
    startAndFinish();
    EXPECT_THAT(seen, ElementsAre(0, 0, 0, 0, -0.5, 0.9, 0.1, 1.0, 0.25, 0.25, 1.0));
}

TEST_F(BatchTest, continuesAfterAFailureAndThenConvertsOnlyUnfinishedJobs) {
    queue({"a.opus", "b.opus", "c.opus"});
    chooseDestination();
    runner->setScript("b.opus", [](const auto& call, const auto& onProgress) {
        std::filesystem::create_directory(call.destination.path()); // a leftover output
        onProgress(0.4);
        throw FFmpegError::processFailed("last words");
    });
    startAndFinish();
    EXPECT_EQ(states(), (std::vector{JobState::completed(), JobState::failed("last words"),
                                     JobState::completed()}));
    EXPECT_EQ(job(1).progress, 0.4);
    EXPECT_FALSE(model->alertMessage());

    runner->setScript("b.opus", nullptr);
    startAndFinish();
    const auto calls = runner->calls();
    ASSERT_EQ(calls.size(), 4U);
    EXPECT_EQ(calls[3].destination, folder.file("out/b_converted_2.mp3"));
    EXPECT_EQ(states(), std::vector(3, JobState::completed()));
}

TEST_F(BatchTest, resetsTheProgressOfAJobThatItConvertsAgain) {
    queue({"a.opus"});
    chooseDestination();
    runner->setScript("a.opus", [](const auto&, const auto& onProgress) {
        onProgress(0.75);
        throw FFmpegError::processFailed("");
    });
    startAndFinish();
    EXPECT_EQ(states(), std::vector{JobState::failed("FFmpeg could not convert this file.")});
    EXPECT_EQ(job(0).progress, 0.75);
    runner->setScript("a.opus", [this](const auto&, const auto&) { runner->waitForRelease(); });
    model->start();
    ASSERT_TRUE(runUntil([this] { return isConverting(0) && !runner->calls().empty(); }));
    EXPECT_EQ(job(0).progress, 0.0);
    runner->release();
    ASSERT_TRUE(runUntil([this] { return !model->isConverting(); }));
}

TEST_F(BatchTest, showsTheMessageOfAPlatformError) {
    queue({"a.opus", "b.opus", "c.opus"});
    chooseDestination();
    runner->setScript("a.opus", [this](const auto&, const auto&) {
        throw PlatformError::folderNotCreated(destination,
                                              std::make_error_code(std::errc::permission_denied));
    });
    runner->setScript("b.opus", [](const auto&, const auto&) { throw FFmpegError::notFound(); });
    startAndFinish();
    EXPECT_EQ(job(0).state, JobState::failed("The folder “" + destination.path() +
                                             "” could not be created: Permission denied."));
    EXPECT_EQ(
        job(1).state,
        JobState::failed("FFmpeg was not found. Install it with Homebrew: brew install ffmpeg"));
    EXPECT_EQ(job(2).state, JobState::completed());
}

TEST_F(BatchTest, numbersOutputsOfOneBaseNameUnlessOverwriting) {
    model->add({folder.file("a/x.opus")});
    model->add({folder.file("b/x.ogg")});
    chooseDestination();
    for (const char* name : {"x.opus", "x.ogg"}) {
        runner->setScript(name, [this](const auto& call, const auto&) {
            folder.write("out/" + std::string(call.destination.lastPathComponent()));
        });
    }
    startAndFinish();
    auto calls = runner->calls();
    EXPECT_EQ(calls[0].destination, folder.file("out/x_converted.mp3"));
    EXPECT_EQ(calls[1].destination, folder.file("out/x_converted_2.mp3"));

    ConversionSettings settings;
    settings.overwrite = true;
    model->setSettings(settings);
    model->add({folder.file("c/x.opus")});
    model->add({folder.file("d/x.opus")});
    startAndFinish();
    calls = runner->calls();
    ASSERT_EQ(calls.size(), 4U);
    EXPECT_EQ(calls[2].destination, folder.file("out/x_converted.mp3"));
    EXPECT_EQ(calls[3].destination, folder.file("out/x_converted.mp3"));
    EXPECT_TRUE(calls[3].settings.overwrite);
}

TEST_F(BatchTest, ignoresTheOutcomeOfARemovedJobAndContinues) {
    queue({"a.opus", "b.opus"});
    chooseDestination();
    runner->setScript("a.opus", [this](const auto&, const auto& onProgress) {
        runner->waitForRelease();
        onProgress(0.5);
    });
    model->start();
    ASSERT_TRUE(runUntil([this] { return isConverting(0); }));
    model->remove(job(0));
    // Fills the freed index; without it the batch would run past the end of the queue.
    queue({"c.opus"});
    runner->release();
    ASSERT_TRUE(runUntil([this] { return !model->isConverting(); }));
    // b moved to an index that was done, and was skipped.
    EXPECT_THAT(names(), ElementsAre("b.opus", "c.opus"));
    EXPECT_EQ(states(), (std::vector{JobState::waiting(), JobState::completed()}));
}

TEST_F(BatchTest, dropsEveryOutcomeOfARemovedJob) {
    const std::function<void()> outcomes[] = {[] {},
                                              [] { throw FFmpegError::processFailed("reason"); },
                                              [] { throw FFmpegError::cancelled(); }};
    for (const auto& outcome : outcomes) {
        makeModel(runner = std::make_shared<ScriptedRunner>());
        queue({"a.opus"});
        chooseDestination();
        runner->setScript("a.opus", [this, outcome](const auto&, const auto&) {
            runner->waitForRelease();
            outcome();
        });
        model->start();
        ASSERT_TRUE(runUntil([this] { return isConverting(0); }));
        model->remove(job(0));
        queue({"b.opus"});
        // Only the end of the batch: a job that is not queued changes nothing.
        EXPECT_EQ(notifications([this] {
                      runner->release();
                      EXPECT_TRUE(runUntil([this] { return !model->isConverting(); }));
                  }),
                  1);
        EXPECT_EQ(states(), std::vector{JobState::waiting()});
    }
}

TEST_F(BatchTest, leavesAPendingAlertAtItsEnd) {
    queue({"a.opus"});
    chooseDestination();
    model->setAlertMessage("pending");
    startAndFinish();
    EXPECT_EQ(model->alertMessage(), "pending");
}

/// Removes the second of three jobs while the first converts, then waits for the batch to end.
void removeDuringABatch(ConverterViewModel& model, ScriptedRunner& runner,
                        const TemporaryFolder& folder) {
    // The process that aborts here created its own temporary folder and would not remove it.
    std::filesystem::remove_all(folder.url().path());
    model.start();
    runUntil([&runner] { return !runner.calls().empty(); });
    model.remove(model.jobs()[1]);
    runner.release();
    runUntil([&model] { return !model.isConverting(); });
}

TEST_F(BatchTest, abortsPastTheEndOfAShortenedQueue) {
    queue({"a.opus", "b.opus", "c.opus"});
    chooseDestination();
    runner->setScript("a.opus", [this](const auto&, const auto&) { runner->waitForRelease(); });
    // The batch still converts c, at index 1, before it reaches index 2.
    runner->setScript("c.opus", [](const auto&, const auto&) {
        static_cast<void>(std::fputs("c converted; ", stderr));
    });
    EXPECT_DEATH(removeDuringABatch(*model, *runner, folder),
                 "c converted; Fatal error: Index out of range");
}

TEST_F(BatchTest, convertsAThousandJobsWithoutRecursion) {
    std::vector<FileURL> files;
    files.reserve(1000);
    for (int i = 0; i < 1000; ++i) {
        files.push_back(folder.file(std::to_string(i) + ".opus"));
    }
    model->add(files);
    chooseDestination();
    startAndFinish();
    EXPECT_EQ(model->completedCount(), 1000U);
    EXPECT_EQ(model->overallProgress(), 1.0);
}

} // namespace
} // namespace kestrel::test
