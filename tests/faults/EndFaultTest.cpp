#include "CallHook.h"
#include "FaultFixture.h"
#include "WaitUntil.h"

#include <gmock/gmock.h>

#include <sys/wait.h>

#include <cerrno>
#include <csignal>
#include <cstddef>
#include <filesystem>
#include <mutex>
#include <optional>
#include <ostream>
#include <regex>
#include <string>
#include <thread>

// How ffmpeg can exit, or fail to.

namespace kestrel::test {
namespace {

using ::testing::Values;

TEST_F(FaultTest, failsAtEveryExitStatusButZeroAndGoesOn) {
    for (int status = 0; status < 256; ++status) {
        queueScript("convert err status " + std::to_string(status) + "\\n\nconvert exit " +
                    std::to_string(status) + "\n");
    }
    convertAll();
    EXPECT_EQ(outcomeOf(0), "completed");
    for (std::size_t status = 1; status < 256; ++status) {
        EXPECT_EQ(outcomeOf(status), "failed: status " + std::to_string(status));
    }
}

class ExitStatusOfTheProbeTest : public FaultTest, public ::testing::WithParamInterface<int> {};

TEST_P(ExitStatusOfTheProbeTest, doesNotMatter) {
    EXPECT_EQ(outcome("probe err Duration: 00:00:10.00\\n\nprobe exit " +
                      std::to_string(GetParam()) +
                      "\nconvert out out_time_ms=5000000\\n\nconvert exit 1\n"),
              "failed: FFmpeg could not convert this file.");
    EXPECT_EQ(job(0).progress, 0.5);
}

INSTANTIATE_TEST_SUITE_P(EndFaults, ExitStatusOfTheProbeTest, Values(0, 1, 127, 255));

struct FatalSignal {
    const char* name;
    int signal;

    friend std::ostream& operator<<(std::ostream& out, const FatalSignal& row) {
        return out << row.name;
    }
};

class FatalSignalTest : public FaultTest, public ::testing::WithParamInterface<FatalSignal> {};

TEST_P(FatalSignalTest, countsAsCancelledAndStopsTheBatch) {
    EXPECT_EQ(
        outcome("convert err words\\n\nconvert raise " + std::to_string(GetParam().signal) + "\n"),
        "cancelled");
    EXPECT_EQ(outcomeOf(1), "waiting");
    model->start();
    ASSERT_TRUE(runUntil([this] { return !model->isConverting(); }));
    EXPECT_EQ(outcomeOf(0), "cancelled");
}

TEST_P(FatalSignalTest, inTheProbeOnlyDisablesProgress) {
    EXPECT_EQ(outcome("probe raise " + std::to_string(GetParam().signal) +
                      "\nconvert out out_time_ms=5000000\\n\nconvert exit 0\n"),
              "completed");
    EXPECT_EQ(outcomeOf(1), "completed");
}

INSTANTIATE_TEST_SUITE_P(EndFaults, FatalSignalTest,
                         Values(FatalSignal{"interrupted", SIGINT},
                                FatalSignal{"terminated", SIGTERM}, FatalSignal{"killed", SIGKILL},
                                FatalSignal{"crashed", SIGSEGV}, FatalSignal{"aborted", SIGABRT},
                                FatalSignal{"brokenPipe", SIGPIPE}, FatalSignal{"hungUp", SIGHUP}),
                         [](const auto& row) { return std::string(row.param.name); });

/// A running conversion that does not end normally.
class EndFaultTest : public FaultTest {
  protected:
    /// Starts the batch and returns once the first conversion has created this file.
    void startAndAwait(const std::string& script, const std::string& file) {
        queueScript(script);
        queueHarmless();
        chooseDestination();
        model->start();
        ASSERT_TRUE(runUntil([&] { return exists(file); }));
    }

    void finish() {
        ASSERT_TRUE(runUntil([this] { return !model->isConverting(); }));
    }

    /// Fifty iterations of the event loop do not end the conversion.
    void expectStillConverting() {
        for (int i = 0; i < 50; ++i) {
            QCoreApplication::processEvents();
        }
        EXPECT_TRUE(isConverting(0));
    }

    void release() { folder.write("go", "x"); }

    const std::string touchUp = "convert touch " + path("up") + "\n";
};

class HeldPipeTest : public EndFaultTest, public ::testing::WithParamInterface<const char*> {
  protected:
    /// Returns once a grandchild holds the pipe and the child is about to exit with the status.
    void startWithGrandchild(int status) {
        startAndAwait("convert hold-" + std::string(GetParam()) + " " + path("go") + "\n" +
                          touchUp + "convert exit " + std::to_string(status) + "\n",
                      "up");
    }
};

TEST_P(HeldPipeTest, isReadUntilTheGrandchildClosesIt) {
    startWithGrandchild(7);
    expectStillConverting();
    release();
    finish();
    EXPECT_EQ(outcomeOf(0), "failed: FFmpeg could not convert this file.");
    EXPECT_EQ(outcomeOf(1), "completed");
}

TEST_P(HeldPipeTest, ignoresACancelAfterTheExit) {
    startWithGrandchild(0);
    model->cancel();
    expectStillConverting();
    release();
    finish();
    // Race: the child may not have exited yet at the cancel.
    EXPECT_THAT(outcomeOf(0), ::testing::AnyOf("completed", "cancelled"));
    EXPECT_EQ(outcomeOf(1), "waiting");
}

INSTANTIATE_TEST_SUITE_P(EndFaults, HeldPipeTest, Values("out", "err"),
                         [](const auto& row) { return std::string(row.param); });

/// A conversion that runs until it is cancelled or released.
struct OddEnd {
    const char* name;
    /// "@" stands for the test's folder. Creates "@up"; may wait for "@go".
    std::string script;
    bool isCancelled;
    bool isReleased;
    const char* first;
    const char* second;

    friend std::ostream& operator<<(std::ostream& out, const OddEnd& row) {
        return out << row.name;
    }
};

class OddEndTest : public EndFaultTest, public ::testing::WithParamInterface<OddEnd> {};

TEST_P(OddEndTest, isAwaited) {
    const OddEnd& row = GetParam();
    startAndAwait(std::regex_replace(row.script, std::regex("@"), folder.url().path() + "/"), "up");
    expectStillConverting();
    if (row.isCancelled) {
        model->cancel();
    }
    if (row.isReleased) {
        expectStillConverting();
        release();
    }
    finish();
    EXPECT_EQ(outcomeOf(0), row.first);
    EXPECT_EQ(outcomeOf(1), row.second);
}

INSTANTIATE_TEST_SUITE_P(
    EndFaults, OddEndTest,
    Values(OddEnd{"afterItHasClosedItsOutput",
                  "convert out progress=end\\n\nconvert close-out\nconvert close-err\n"
                  "convert touch @up\nconvert wait-for @go\nconvert exit 3\n",
                  false, true, "failed: FFmpeg could not convert this file.", "completed"},
           OddEnd{"afterItHasClosedItsOutputAndIsCancelled",
                  "convert close-out\nconvert close-err\nconvert touch @up\nconvert block\n", true,
                  false, "cancelled", "waiting"},
           OddEnd{"whereItIgnoresTheInterrupt",
                  "convert ignore-interrupt\nconvert touch @up\nconvert wait-for @go\n", true, true,
                  "completed", "waiting"},
           OddEnd{"whereItHasStoppedItself",
                  "convert touch @up\nconvert raise " + std::to_string(SIGSTOP) + "\n", true, false,
                  "cancelled", "waiting"},
           OddEnd{"whereItAnswersTheInterrupt",
                  "convert on-interrupt 255 progress=end\\n\nconvert err Exiting normally\\n\n"
                  "convert touch @up\nconvert block\n",
                  true, false, "failed: Exiting normally", "waiting"}),
    [](const auto& row) { return std::string(row.param.name); });

TEST_F(FaultTest, failsWithTheReasonIfTheExitStatusIsLost) {
    // Calls 1 and 2 wait for the probe and reap it. Before call 3, the child is reaped elsewhere.
    const CallHook hook(CallHook::Call::waitForExit, [](int count) {
        if (count == 3) {
            ::waitpid(-1, nullptr, 0);
        }
        return 0;
    });
    EXPECT_EQ(outcome("convert exit 0\n"), "failed: The connection to the program “" CHILD_HELPER
                                           "” was lost: No child processes.");
    EXPECT_EQ(outcomeOf(1), "completed");
}

/// Fails the first read() of one of the first conversion's pipes.
class ReadFaultTest : public FaultTest {
  protected:
    enum class Stream { progress, diagnostics };

    /// Converts all files that are queued.
    void convertWithAFailedRead(Stream stream) {
        destination = folder.file("new");
        std::mutex mutex;
        std::optional<std::thread::id> worker;
        // The worker creates the folder after the duration probe and before the child.
        const CallHook folders(CallHook::Call::makeFolder, [&](int) {
            const std::lock_guard lock(mutex);
            worker = std::this_thread::get_id();
            return 0;
        });
        bool hasFailed = false;
        const CallHook reads(CallHook::Call::readPipe, [&](int) {
            const std::lock_guard lock(mutex);
            // The worker reads the progress, another thread the diagnostics.
            const Stream read =
                worker == std::this_thread::get_id() ? Stream::progress : Stream::diagnostics;
            if (hasFailed || !worker || read != stream) {
                return 0;
            }
            hasFailed = true;
            return EIO;
        });
        convertAll();
    }

    const std::string lost =
        "failed: The connection to the program “" CHILD_HELPER "” was lost: Input/output error.";
};

TEST_F(ReadFaultTest, failsTheFileAlone) {
    for (const Stream stream : {Stream::progress, Stream::diagnostics}) {
        makeModel(service);
        queueHarmless();
        queueHarmless();
        convertWithAFailedRead(stream);
        EXPECT_EQ(outcomeOf(0), lost);
        EXPECT_EQ(outcomeOf(1), "completed");
        std::filesystem::remove_all(destination.path());
    }
}

TEST_F(ReadFaultTest, leavesTheChildOfAFailedProgressToItself) {
    queueScript("convert wait-for " + path("go") + "\nconvert touch " + path("done") + "\n");
    convertWithAFailedRead(Stream::progress);
    EXPECT_EQ(outcomeOf(0), lost);
    // The service has no child any more: this interrupts nothing.
    service->interruptActiveProcess();
    folder.write("go", "x");
    EXPECT_TRUE(waitUntil([this] { return exists("done"); }));
}

TEST_F(FaultTest, retriesAWaitThatFailsWithEintr) {
    const CallHook hook(CallHook::Call::waitForExit,
                        [](int count) { return count % 3 != 0 ? EINTR : 0; });
    EXPECT_EQ(outcome("convert exit 0\n"), "completed");
    EXPECT_EQ(outcomeOf(1), "completed");
}

} // namespace
} // namespace kestrel::test
