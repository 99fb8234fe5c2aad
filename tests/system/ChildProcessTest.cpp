#include "ChildProcess.h"

#include "LeakGuard.h"
#include "Pipe.h"
#include "PlatformError.h"
#include "RunInChild.h"
#include "TemporaryFolder.h"
#include "WaitUntil.h"

#include <gmock/gmock.h>

#include <fcntl.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <string>
#include <system_error>
#include <thread>
#include <utility>
#include <vector>

namespace kestrel {
namespace {

using test::contents;
using test::LeakGuard;
using test::runInChild;
using test::TemporaryFolder;
using test::waitUntil;
using ::testing::HasSubstr;
using StandardOutput = ChildProcess::StandardOutput;

std::unique_ptr<ChildProcess> scripted(const std::string& script,
                                       StandardOutput output = StandardOutput::pipe) {
    return std::make_unique<ChildProcess>(FileURL(CHILD_HELPER),
                                          std::vector<std::string>{"--script", script}, output);
}

ProcessExit exitOf(const std::string& script) {
    const auto child = scripted(script);
    child->launch();
    return child->waitUntilExit();
}

ProcessExit exited(int status) {
    return {ProcessExit::Reason::exit, status};
}

ProcessExit killed(int signal) {
    return {ProcessExit::Reason::uncaughtSignal, signal};
}

/// Returns the number of open descriptors in the child's report.
int descriptorCount(const std::string& report) {
    int count = 0;
    for (std::size_t at = report.find("fd "); at != std::string::npos;
         at = report.find("\nfd ", at + 1)) {
        ++count;
    }
    return count;
}

TEST(ChildProcess, hasSeparatePipesForStdoutAndStderr) {
    const LeakGuard guard;
    const auto child = scripted("out one\\n\nerr two\\n\nexit 3");
    child->launch();
    EXPECT_EQ(readToEnd(child->takeStandardOutput()), "one\n");
    EXPECT_EQ(readToEnd(child->takeStandardError()), "two\n");
    EXPECT_EQ(child->waitUntilExit(), exited(3));
}

TEST(ChildProcess, redirectsUnwantedStdoutToTheNullDevice) {
    const LeakGuard guard;
    const auto child = scripted("flood-out 1000000\nerr done", StandardOutput::nullDevice);
    child->launch();
    EXPECT_FALSE(child->takeStandardOutput());
    EXPECT_EQ(readToEnd(child->takeStandardError()), "done");
    EXPECT_EQ(child->waitUntilExit(), exited(0));
}

TEST(ChildProcess, distinguishesExitStatusFromSignal) {
    const LeakGuard guard;
    EXPECT_EQ(exitOf("exit 0"), exited(0));
    EXPECT_EQ(exitOf("exit 1"), exited(1));
    EXPECT_EQ(exitOf("exit 255"), exited(255));
    EXPECT_EQ(exitOf("raise 2"), killed(SIGINT));
    EXPECT_EQ(exitOf("raise 9"), killed(SIGKILL));
    EXPECT_EQ(exitOf("raise 11"), killed(SIGSEGV));
}

TEST(ChildProcess, interruptsARunningChild) {
    const LeakGuard guard;
    const auto child = scripted("out up\nblock");
    child->launch();
    const FileDescriptor output = child->takeStandardOutput();
    std::string text;
    std::thread interrupter;
    readChunks(output, [&](std::string_view chunk) {
        text += chunk;
        interrupter = std::thread([&child] { child->interrupt(); });
    });
    interrupter.join();
    EXPECT_EQ(text, "up");
    EXPECT_EQ(child->waitUntilExit(), killed(SIGINT));
}

/// Returns the number of pidfds that this process has open.
int pidfdCount() {
    int count = 0;
    for (const auto& entry : std::filesystem::directory_iterator("/proc/self/fd")) {
        std::error_code gone;
        const std::string target = std::filesystem::read_symlink(entry.path(), gone).string();
        count += target.find("pidfd") != std::string::npos ? 1 : 0;
    }
    return count;
}

TEST(ChildProcess, holdsAPidfdIfTheKernelSupportsIt) {
    const LeakGuard guard;
    const FileDescriptor own(static_cast<int>(::syscall(SYS_pidfd_open, ::getpid(), 0)));
    const int before = pidfdCount();
    const auto child = scripted("block");
    child->launch();
    EXPECT_EQ(pidfdCount(), own ? before + 1 : 0);
    child->interrupt();
    child->waitUntilExit();
    EXPECT_EQ(pidfdCount(), before);
}

TEST(ChildProcess, mayHandleAnInterrupt) {
    const LeakGuard guard;
    const auto child = scripted("on-interrupt 42 bye\nout up\nblock");
    child->launch();
    std::string text;
    readChunks(child->takeStandardOutput(), [&](std::string_view chunk) {
        text += chunk;
        child->interrupt();
    });
    EXPECT_EQ(text, "upbye");
    EXPECT_EQ(child->waitUntilExit(), exited(42));
}

TEST(ChildProcess, ignoresAnInterruptBeforeLaunch) {
    const LeakGuard guard;
    const auto child = scripted("exit 7");
    child->interrupt();
    child->launch();
    EXPECT_EQ(child->waitUntilExit(), exited(7));
}

TEST(ChildProcess, ignoresAnInterruptAfterExit) {
    const LeakGuard guard;
    const auto child = scripted("exit 7");
    child->launch();
    EXPECT_EQ(readToEnd(child->takeStandardOutput()), "");
    child->interrupt();
    EXPECT_EQ(child->waitUntilExit(), exited(7));
    child->interrupt();
}

TEST(ChildProcess, toleratesInterruptsAtAnyTime) {
    const LeakGuard guard;
    for (int i = 0; i < 200; ++i) {
        const auto child = scripted("exit 0");
        std::thread interrupter([&child, i] {
            std::this_thread::sleep_for(std::chrono::microseconds(i * 20));
            child->interrupt();
        });
        child->launch();
        const ProcessExit exit = child->waitUntilExit();
        interrupter.join();
        EXPECT_TRUE(exit == exited(0) || exit == killed(SIGINT)) << exit.code;
    }
}

TEST(ChildProcess, losesNoInterruptOnceRunning) {
    const LeakGuard guard;
    const TemporaryFolder folder;
    for (int i = 0; i < 100; ++i) {
        const std::string up = folder.file(std::to_string(i)).path();
        const auto child = scripted("touch " + up + "\nblock");
        // After the child has shown that it runs, but possibly before launch() has returned.
        std::thread interrupter([&] {
            while (::access(up.c_str(), F_OK) != 0) {
            }
            child->interrupt();
        });
        child->launch();
        EXPECT_EQ(child->waitUntilExit(), killed(SIGINT));
        interrupter.join();
    }
}

TEST(ChildProcess, inheritsOnlyStandardStreamsAndDefaultSignals) {
    const LeakGuard guard;
    const TemporaryFolder folder;
    sigset_t blocked{};
    sigset_t before{};
    ::sigemptyset(&blocked);
    ::sigaddset(&blocked, SIGINT);
    ::sigaddset(&blocked, SIGTERM);
    ::pthread_sigmask(SIG_BLOCK, &blocked, &before);
    const auto oldHandler = std::signal(SIGINT, SIG_IGN);
    const auto oldPipeHandler = std::signal(SIGPIPE, SIG_IGN);
    // Neither another child's pipe ends nor a descriptor without FD_CLOEXEC are inherited.
    const FileDescriptor inheritable(::dup(STDIN_FILENO));
    const auto other = scripted("block");
    other->launch();
    const auto child = scripted("report " + folder.file("report").path());
    child->launch();
    child->waitUntilExit();
    other->interrupt();
    other->waitUntilExit();
    static_cast<void>(std::signal(SIGINT, oldHandler));
    static_cast<void>(std::signal(SIGPIPE, oldPipeHandler));
    ::pthread_sigmask(SIG_SETMASK, &before, nullptr);

    const std::string report = contents(folder.file("report"));
    EXPECT_THAT(report, HasSubstr("fd 0 "));
    EXPECT_THAT(report, HasSubstr("fd 1 pipe:"));
    EXPECT_THAT(report, HasSubstr("fd 2 pipe:"));
    EXPECT_EQ(descriptorCount(report), 3);
    EXPECT_THAT(report, HasSubstr("SigBlk:\t0000000000000000"));
    // glibc reserves the first two real-time signals and does not reset them.
    constexpr std::uint64_t reserved = 3ULL << 31U;
    const std::size_t ignored = report.find("SigIgn:\t");
    ASSERT_NE(ignored, std::string::npos);
    EXPECT_EQ(std::stoull(report.substr(ignored + 8), nullptr, 16) & ~reserved, 0U);
    EXPECT_THAT(report, HasSubstr("group " + std::to_string(::getpgrp()) + "\n"));
}

TEST(ChildProcess, inheritsStdin) {
    const TemporaryFolder folder;
    // Distinguishable from /dev/null.
    const FileURL input = folder.write("input", "text");
    const FileDescriptor file(::open(input.path().c_str(), O_RDONLY | O_CLOEXEC));
    const FileDescriptor before(::fcntl(STDIN_FILENO, F_DUPFD_CLOEXEC, 3));
    ::dup2(file.get(), STDIN_FILENO);
    const auto child = scripted("report " + folder.file("report").path());
    child->launch();
    child->waitUntilExit();
    ::dup2(before.get(), STDIN_FILENO);
    EXPECT_THAT(contents(folder.file("report")), HasSubstr("fd 0 " + input.path() + "\n"));
}

TEST(ChildProcess, worksWithClosedStandardStreams) {
    const int status = runInChild([] {
        ::close(STDIN_FILENO);
        ::close(STDOUT_FILENO);
        ::close(STDERR_FILENO);
        const auto child = scripted("out one\nerr two");
        child->launch();
        const bool isRight = readToEnd(child->takeStandardOutput()) == "one" &&
                             readToEnd(child->takeStandardError()) == "two" &&
                             child->waitUntilExit() == exited(0);
        return isRight ? 0 : 1;
    });
    EXPECT_EQ(status, 0);
}

TEST(ChildProcess, throwsTheReasonWhenItCannotStart) {
    const LeakGuard guard;
    const TemporaryFolder folder;
    const FileURL plain = folder.write("plain", "no program");
    const FileURL empty = folder.write("no-interpreter", "text\n");
    std::filesystem::permissions(empty.path(), std::filesystem::perms::all);
    const FileURL lost = folder.write("lost-interpreter", "#!/nowhere/at/all\n");
    std::filesystem::permissions(lost.path(), std::filesystem::perms::all);
    const std::pair<FileURL, int> rows[] = {{folder.file("missing"), ENOENT},
                                            {plain, EACCES},
                                            {folder.url(), EACCES},
                                            {empty, ENOEXEC},
                                            {lost, ENOENT},
                                            {plain.appendingPathComponent("below"), ENOTDIR}};
    for (const auto& [program, error] : rows) {
        ChildProcess child(program, {}, StandardOutput::pipe);
        try {
            child.launch();
            ADD_FAILURE() << program.path() << " started";
        } catch (const PlatformError& failure) {
            EXPECT_EQ(failure.code().value(), error) << program.path();
            EXPECT_THAT(failure.what(),
                        HasSubstr("“" + program.path() + "” could not be started: "));
        }
        child.interrupt();
    }
}

TEST(ChildProcess, passesArgumentsVerbatim) {
    const TemporaryFolder folder;
    const FileURL script = folder.write("script", "convert record-arguments " +
                                                      folder.file("arguments").path() + "\n");
    std::vector<std::string> arguments{
        "-i", script.path(), "", " two  blanks ", "'\"$HOME`;&|", "\n", "\xff\xfe", "-n", "*"};
    ChildProcess child(FileURL(CHILD_HELPER), arguments, StandardOutput::pipe);
    child.launch();
    EXPECT_EQ(child.waitUntilExit(), exited(0));
    std::string expected;
    for (const std::string& argument : arguments) {
        expected += argument + '\0';
    }
    EXPECT_EQ(contents(folder.file("arguments")), expected + "\n");
}

TEST(ChildProcess, isReapedWithoutAWait) {
    const LeakGuard guard;
    const TemporaryFolder folder;
    auto child =
        scripted("wait-for " + folder.file("go").path() + "\ntouch " + folder.file("gone").path());
    child->launch();
    child.reset();
    folder.write("go", "x");
    EXPECT_TRUE(waitUntil([&folder] { return folder.has("gone"); }));
}

TEST(ChildProcess, exitsWhileAGrandchildHoldsItsPipes) {
    const LeakGuard guard;
    const TemporaryFolder folder;
    const std::string go = folder.file("go").path();
    const auto child = scripted("hold-out " + go + "\nhold-err " + go + "\nexit 4");
    child->launch();
    EXPECT_EQ(child->waitUntilExit(), exited(4));
    folder.write("go", "x");
    EXPECT_EQ(readToEnd(child->takeStandardOutput()), "");
    EXPECT_EQ(readToEnd(child->takeStandardError()), "");
}

TEST(ChildProcess, doesNotLeakPipesIntoChildrenOfOtherThreads) {
    const LeakGuard guard;
    const TemporaryFolder folder;
    std::vector<std::thread> threads;
    threads.reserve(4);
    for (int t = 0; t < 4; ++t) {
        threads.emplace_back([&folder, t] {
            for (int i = 0; i < 20; ++i) {
                const std::string name = std::to_string(t) + "-" + std::to_string(i);
                const auto child = scripted("report " + folder.file(name).path());
                child->launch();
                EXPECT_EQ(child->waitUntilExit(), exited(0));
                EXPECT_EQ(descriptorCount(contents(folder.file(name))), 3);
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
}

TEST(ChildProcess, inheritsEnvironmentAndWorkingFolder) {
    const TemporaryFolder folder;
    ::setenv("KESTREL_TEST_VARIABLE", "its value", 1);
    EXPECT_EQ(exitOf("report " + folder.file("report").path()), exited(0));
    ::unsetenv("KESTREL_TEST_VARIABLE");
    const std::string report = contents(folder.file("report"));
    EXPECT_THAT(report, HasSubstr("\nvariable its value\n"));
    EXPECT_THAT(report, HasSubstr("\nfolder " + std::filesystem::current_path().string() + "\n"));
}

#ifndef NDEBUG
TEST(ChildProcessDeathTest, assertsThatItIsLaunchedOnce) {
    const auto child = scripted("exit 0");
    child->launch();
    EXPECT_DEATH(child->launch(), "Assertion");
    child->waitUntilExit();
    EXPECT_DEATH(child->launch(), "Assertion");
}

TEST(ChildProcessDeathTest, assertsThatItIsNotLaunchedAgainAfterABadProgram) {
    ChildProcess child(FileURL("/no-such-program"), {}, ChildProcess::StandardOutput::pipe);
    EXPECT_THROW(child.launch(), PlatformError);
    EXPECT_DEATH(child.launch(), "Assertion");
}

TEST(ChildProcessDeathTest, assertsThatItIsWaitedForOnceAndNotBeforeTheLaunch) {
    const auto child = scripted("exit 0");
    EXPECT_DEATH(child->waitUntilExit(), "Assertion");
    child->launch();
    child->waitUntilExit();
    EXPECT_DEATH(child->waitUntilExit(), "Assertion");
}

TEST(ChildProcessDeathTest, assertsThatItIsLaunchedBeforeItsPipesAreTaken) {
    const auto child = scripted("exit 0");
    EXPECT_DEATH(child->takeStandardOutput(), "Assertion");
    EXPECT_DEATH(child->takeStandardError(), "Assertion");
}
#endif

} // namespace
} // namespace kestrel
