#include "CallHook.h"
#include "ChildProcess.h"
#include "FaultFixture.h"
#include "Seed.h"

#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <csignal>
#include <iostream>
#include <ostream>
#include <random>
#include <string>
#include <thread>
#include <vector>

// Cancelling at every point of a conversion.

namespace kestrel::test {
namespace {

using Call = CallHook::Call;

class InterruptFaultTest : public FaultTest {
  protected:
    InterruptFaultTest() {
        queueScript("probe err Duration: 00:00:10.00\\n\nconvert out out_time_ms=5000000\\n\n"
                    "convert write-output fine\n");
        queueHarmless();
        chooseDestination();
    }

    /// Interrupts the child, as Cancel does, right before call number `count`.
    CallHook::Before interrupting(int count) {
        return [this, count](int current) {
            if (current == count) {
                service->interruptActiveProcess();
            }
            return 0;
        };
    }

    void finish() {
        ASSERT_TRUE(runUntil([this] { return !model->isConverting(); }));
    }
};

TEST_F(InterruptFaultTest, changesNothingBeforeTheStart) {
    model->cancel();
    model->start();
    finish();
    EXPECT_EQ(outcomeOf(0), "completed");
    EXPECT_EQ(outcomeOf(1), "completed");
}

TEST_F(InterruptFaultTest, stopsTheBatchBeforeItsFirstFileWhenItCancelsAtOnce) {
    model->start();
    model->cancel();
    finish();
    EXPECT_EQ(outcomeOf(0), "waiting");
    EXPECT_EQ(outcomeOf(1), "waiting");
}

TEST_F(InterruptFaultTest, letsTheProbeFinishAndCancelsItsFile) {
    folder.write("in/1.opus", "probe touch " + path("probing") + "\nprobe wait-for " + path("go") +
                                  "\nconvert block\n");
    model->start();
    ASSERT_TRUE(runUntil([this] { return exists("probing"); }));
    model->cancel();
    folder.write("go", "x");
    finish();
    EXPECT_EQ(outcomeOf(0), "cancelled");
    EXPECT_EQ(outcomeOf(1), "waiting");
}

/// A cancel right before a call that the worker makes for the first conversion.
struct InterruptPoint {
    const char* name;
    Call call;
    /// The number of the call, counted from 1.
    int count;
    /// The script of the first conversion.
    const char* script;
    const char* first;
    const char* second;

    friend std::ostream& operator<<(std::ostream& out, const InterruptPoint& row) {
        return out << row.name;
    }
};

class InterruptPointTest : public InterruptFaultTest,
                           public ::testing::WithParamInterface<InterruptPoint> {};

TEST_P(InterruptPointTest, reachesTheChildOfTheConversion) {
    const InterruptPoint& row = GetParam();
    folder.write("in/1.opus", row.script);
    destination = folder.file("new");
    chooseDestination();
    const CallHook hook(row.call, interrupting(row.count));
    model->start();
    finish();
    EXPECT_EQ(outcomeOf(0), row.first);
    EXPECT_EQ(outcomeOf(1), row.second);
}

INSTANTIATE_TEST_SUITE_P(
    InterruptFaults, InterruptPointTest,
    ::testing::Values(InterruptPoint{"betweenTheProbeAndTheConversion", Call::makeFolder, 1,
                                     "convert block\n", "cancelled", "waiting"},
                      // The threads are the worker, the probe, and the stderr reader, which is
                      // created before the child.
                      InterruptPoint{"beforeTheConversionHasBegunToStart", Call::thread, 3,
                                     "convert block\n", "cancelled", "waiting"},
                      InterruptPoint{"beforeTheWorkerRuns", Call::thread, 1, "convert block\n",
                                     "cancelled", "waiting"},
                      InterruptPoint{"whileTheConversionStarts", Call::spawn, 2, "convert block\n",
                                     "cancelled", "waiting"}),
    [](const auto& row) { return std::string(row.param.name); });

TEST(ChildInterruptTest, reachesTheChildAndNoOtherProcessWhileItStarts) {
    const pid_t bystander = ::fork();
    if (bystander == 0) {
        ::pause();
        ::_exit(0);
    }
    ASSERT_GT(bystander, 0);
    ChildProcess child(FileURL("/bin/sleep"), {"20"}, ChildProcess::StandardOutput::nullDevice);
    {
        const CallHook hook(Call::spawn, [&child](int) {
            child.interrupt();
            return 0;
        });
        child.launch();
    }
    const ProcessExit expected{ProcessExit::Reason::uncaughtSignal, SIGINT};
    EXPECT_EQ(child.waitUntilExit(), expected);
    EXPECT_EQ(::waitpid(bystander, nullptr, WNOHANG), 0);
    ::kill(bystander, SIGKILL);
    ::waitpid(bystander, nullptr, 0);
}

TEST_F(InterruptFaultTest, changesNothingWhileTheConversionIsReaped) {
    // The only file: a late interrupt would otherwise be one of the next file's probe.
    model->remove(model->jobs()[1]);
    // The child has exited and is about to be reaped; the interrupt must wait until it is.
    std::thread interrupter;
    const CallHook hook(Call::waitForExit, [this, &interrupter](int count) {
        if (count == 4) {
            interrupter = std::thread([this] { service->interruptActiveProcess(); });
        }
        return 0;
    });
    model->start();
    finish();
    interrupter.join();
    EXPECT_EQ(outcomeOf(0), "completed");
}

TEST_F(InterruptFaultTest, isHarmlessAThousandTimesAtRandomMoments) {
    const unsigned int seed = randomSeed();
    std::mt19937 random(seed);
    using Clock = std::chrono::steady_clock;
    const auto begin = Clock::now();
    model->start();
    finish();
    const auto whole = std::chrono::duration_cast<std::chrono::microseconds>(Clock::now() - begin);
    std::uniform_int_distribution<int> microseconds(0, static_cast<int>(whole.count()));
    int cancelled = 0;
    for (int i = 0; i < 1000; ++i) {
        // Queue both files anew.
        while (!model->jobs().empty()) {
            model->remove(model->jobs().front());
        }
        model->add({folder.file("in")});
        const auto moment = Clock::now() + std::chrono::microseconds(microseconds(random));
        model->start();
        while (Clock::now() < moment) {
            QCoreApplication::processEvents();
        }
        model->cancel();
        ASSERT_TRUE(runUntil([this] { return !model->isConverting(); })) << "seed " << seed;
        const auto isExpected = [](const JobState& state) {
            return state.is(JobState::Case::waiting) || state.is(JobState::Case::cancelled) ||
                   state.is(JobState::Case::completed);
        };
        const std::vector<JobState> ends = states();
        ASSERT_TRUE(std::all_of(ends.begin(), ends.end(), isExpected))
            << outcomeOf(0) << ", " << outcomeOf(1) << ", seed " << seed;
        cancelled += ends[0].is(JobState::Case::cancelled) ? 1 : 0;
    }
    EXPECT_GT(cancelled, 0) << "seed " << seed;
    std::cout << cancelled << " of 1000 conversions were cancelled, seed " << seed << '\n';
}

} // namespace
} // namespace kestrel::test
