#include "FaultFixture.h"
#include "FileDescriptor.h"
#include "MediaFiles.h"

#include <gmock/gmock.h>

#include <fcntl.h>
#include <pty.h>
#include <sys/time.h>
#include <unistd.h>

#include <atomic>
#include <chrono>
#include <csignal>
#include <cstddef>
#include <filesystem>
#include <list>
#include <string>
#include <thread>
#include <vector>

// Unusual process environments: standard streams, SIGCHLD dispositions, signal storms.

namespace kestrel::test {
namespace {

using ::testing::HasSubstr;

/// Replaces or closes a standard stream for its lifetime.
class ReplacedStream {
  public:
    /// A replacement of -1 closes the stream.
    ReplacedStream(int stream, int replacement)
        : stream_(stream), before_(::fcntl(stream, F_DUPFD_CLOEXEC, 100)) {
        if (replacement < 0) {
            ::close(stream);
        } else {
            ::dup2(replacement, stream);
        }
    }

    ReplacedStream(const ReplacedStream&) = delete;
    ReplacedStream& operator=(const ReplacedStream&) = delete;

    ~ReplacedStream() { ::dup2(before_.get(), stream_); }

  private:
    int stream_;
    FileDescriptor before_;
};

TEST_F(FaultTest, convertsWithStdinClosed) {
    {
        const ReplacedStream noInput(STDIN_FILENO, -1);
        EXPECT_EQ(
            outcome("probe report " + path("probe") + "\nconvert report " + path("convert") + "\n"),
            "completed");
    }
    EXPECT_EQ(outcomeOf(1), "completed");
    EXPECT_THAT(contents(folder.file("probe")), HasSubstr("fd 0 /dev/null\n"));
    EXPECT_THAT(contents(folder.file("convert")), HasSubstr("fd 0 /dev/null\n"));
}

TEST_F(FaultTest, convertsWithAnotherFileAsStdin) {
    // As any file that is opened while stdin is closed: close-on-exec, so children lack it.
    const FileDescriptor own(::open("/dev/zero", O_RDONLY | O_CLOEXEC));
    {
        const ReplacedStream input(STDIN_FILENO, own.get());
        ::fcntl(STDIN_FILENO, F_SETFD, FD_CLOEXEC);
        EXPECT_EQ(outcome("convert report " + path("convert") + "\n"), "completed");
    }
    EXPECT_THAT(contents(folder.file("convert")), HasSubstr("fd 0 /dev/null\n"));
}

TEST_F(FaultTest, convertsOnATerminal) {
    int master = -1;
    int terminal = -1;
    ASSERT_EQ(::openpty(&master, &terminal, nullptr, nullptr, nullptr), 0);
    const FileDescriptor masterEnd(master);
    const FileDescriptor terminalEnd(terminal);
    const std::string name = ::ttyname(terminal);
    {
        const ReplacedStream input(STDIN_FILENO, terminal);
        EXPECT_EQ(outcome("convert report " + path("convert") + "\n"), "completed");
    }
    EXPECT_EQ(outcomeOf(1), "completed");
    EXPECT_THAT(contents(folder.file("convert")), HasSubstr("fd 0 " + name + "\n"));
}

/// The parameter is the standard streams that are closed.
class ClosedStreamsTest : public FaultTest,
                          public ::testing::WithParamInterface<std::vector<int>> {};

TEST_P(ClosedStreamsTest, changeNothing) {
    {
        std::list<ReplacedStream> closed;
        for (const int stream : GetParam()) {
            closed.emplace_back(stream, -1);
        }
        outcome("probe err Duration: 00:00:10.00\\n\nconvert out out_time_ms=5000000\\n\n"
                "convert err last words\\n\nconvert exit 1\n");
    }
    EXPECT_EQ(outcomeOf(0), "failed: last words");
    EXPECT_EQ(job(0).progress, 0.5);
    EXPECT_EQ(outcomeOf(1), "completed");
}

INSTANTIATE_TEST_SUITE_P(EnvironmentFaults, ClosedStreamsTest,
                         ::testing::Values(std::vector{STDOUT_FILENO, STDERR_FILENO},
                                           std::vector{STDIN_FILENO, STDOUT_FILENO,
                                                       STDERR_FILENO}));

/// Replaces the disposition of a signal for its lifetime.
class ReplacedAction {
  public:
    ReplacedAction(int signal, void (*handler)(int), int flags) : signal_(signal) {
        struct sigaction action = {};

        action.sa_handler = handler;
        action.sa_flags = flags;
        ::sigaction(signal, &action, &before_);
    }

    ReplacedAction(const ReplacedAction&) = delete;
    ReplacedAction& operator=(const ReplacedAction&) = delete;

    ~ReplacedAction() { ::sigaction(signal_, &before_, nullptr); }

  private:
    int signal_;

    struct sigaction before_ = {};
};

TEST_F(FaultTest, getsExitStatusesThoughSigchldWasIgnored) {
    const ReplacedAction ignored(SIGCHLD, SIG_IGN, 0);
    EXPECT_EQ(outcome("convert err words\\n\nconvert exit 3\n"), "failed: words");
    EXPECT_EQ(outcomeOf(1), "completed");
}

TEST_F(FaultTest, getsExitStatusesThoughSaNocldwaitWasSet) {
    const ReplacedAction noWait(SIGCHLD, SIG_DFL, SA_NOCLDWAIT);
    EXPECT_EQ(outcome("convert err words\\n\nconvert exit 3\n"), "failed: words");
    EXPECT_EQ(outcomeOf(1), "completed");
}

std::atomic<int> signalCount = 0;

/// Sends SIGALRM every millisecond, by a timer and to every thread, for its lifetime. Without
/// SA_RESTART, so that every interruptible call fails with EINTR.
class SignalStorm {
  public:
    SignalStorm() {
        struct sigaction action = {};

        action.sa_handler = [](int) { ++signalCount; };
        // Never restored: the last signal may still be pending after the destructor.
        ::sigaction(SIGALRM, &action, nullptr);
        signalCount = 0;
        setInterval(1000);
        // The kernel prefers the main thread for a timer's signals, unless it blocks them.
        thread_ = std::thread([this] {
            while (!isOver_) {
                signalEveryThread();
                std::this_thread::sleep_for(std::chrono::milliseconds(1));
            }
        });
    }

    SignalStorm(const SignalStorm&) = delete;
    SignalStorm& operator=(const SignalStorm&) = delete;

    ~SignalStorm() {
        isOver_ = true;
        thread_.join();
        setInterval(0);
    }

  private:
    static void setInterval(suseconds_t microseconds) {
        const itimerval interval{{0, microseconds}, {0, microseconds}};
        ::setitimer(ITIMER_REAL, &interval, nullptr);
    }

    static void signalEveryThread() {
        for (const auto& task : std::filesystem::directory_iterator("/proc/self/task")) {
            ::tgkill(::getpid(), std::stoi(task.path().filename().string()), SIGALRM);
        }
    }

    std::atomic<bool> isOver_ = false;
    std::thread thread_;
};

TEST_F(FaultTest, convertsInAStormOfSignals) {
    {
        const SignalStorm storm;
        for (int i = 0; i < 20; ++i) {
            queueScript("probe flood-err 300000\nprobe err \\nDuration: 00:00:10.00\\n\n"
                        "convert flood-out 300000\nconvert flood-err 300000\n"
                        "convert out \\nout_time_ms=5000000\\n\nconvert write-output fine\n");
        }
        destination = folder.file("new/folders");
        convertAll();
    }
    EXPECT_GT(signalCount, 20);
    for (std::size_t i = 0; i < 20; ++i) {
        EXPECT_EQ(outcomeOf(i), "completed");
        EXPECT_EQ(contents(output(std::to_string(i + 1) + "_converted.mp3")), "fine");
    }
}

TEST_F(FaultTest, convertsARealFileInAStormOfSignals) {
    binary = FFmpegService::locateBinary();
    makeOpusFile(folder.file("in/tone.opus"), 5);
    model->add({folder.file("in")});
    {
        const SignalStorm storm;
        convertAll();
    }
    EXPECT_GT(signalCount, 20);
    EXPECT_EQ(outcomeOf(0), "completed");
    EXPECT_NEAR(describeAudio(output("tone_converted.mp3")).seconds, 5, 0.1);
}

} // namespace
} // namespace kestrel::test
