#include "ChildProcess.h"

#include "Pipe.h"
#include "PlatformError.h"
#include "SpawnAttributes.h"

#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cassert>
#include <cerrno>
#include <csignal>
#include <system_error>
#include <thread>
#include <utility>

// The header of glibc 2.36 lacks extern "C".
extern "C" {
#include <sys/pidfd.h>
}

namespace kestrel {

namespace {

/// Waits for the child to exit; reaps it unless `options` has WNOWAIT. Returns errno, or 0.
int waitForExit(pid_t child, int options, siginfo_t& info) noexcept {
    while (::waitid(P_PID, static_cast<id_t>(child), &info, WEXITED | options) != 0) {
        if (errno != EINTR) {
            return errno;
        }
    }
    return 0;
}

/// While SIGCHLD is ignored, children are reaped automatically and their exit status is lost. This
/// process may have inherited that.
void restoreDefaultSigchld() noexcept {
    struct sigaction action = {};

    const bool isKnown = ::sigaction(SIGCHLD, nullptr, &action) == 0;
    const bool isIgnored = (action.sa_flags & SA_SIGINFO) == 0 && action.sa_handler == SIG_IGN;
    if (isKnown && (isIgnored || (action.sa_flags & SA_NOCLDWAIT) != 0)) {
        action = {};
        ::sigaction(SIGCHLD, &action, nullptr);
    }
}

/// Reaps the child on a thread of its own.
void reapInBackground(pid_t child) noexcept {
    try {
        std::thread([child] {
            siginfo_t info{};
            waitForExit(child, 0, info);
        }).detach();
    } catch (const std::system_error&) {
        // Without a thread that waits, the child stays a zombie until this process exits.
    }
}

} // namespace

ChildProcess::ChildProcess(FileURL executable, std::vector<std::string> arguments,
                           StandardOutput standardOutput)
    : executable_(std::move(executable)),
      arguments_(std::move(arguments)),
      standardOutputKind_(standardOutput) {}

ChildProcess::~ChildProcess() {
    if (stage_ == Stage::running) {
        reapInBackground(pid_);
    }
}

void ChildProcess::enforce(Stage expected) const noexcept {
    assert(stage_ == expected);
    static_cast<void>(expected);
}

FileDescriptor ChildProcess::takeStandardOutput() noexcept {
    assert(stage_ != Stage::notStarted);
    return std::move(standardOutput_);
}

FileDescriptor ChildProcess::takeStandardError() noexcept {
    assert(stage_ != Stage::notStarted);
    return std::move(standardError_);
}

void ChildProcess::launch() {
    enforce(Stage::notStarted);
    restoreDefaultSigchld();
    setStage(Stage::launching);
    try {
        SpawnAttributes attributes;
        attributes.inheritStandardInput();
        Pipe output;
        if (standardOutputKind_ == StandardOutput::pipe) {
            output = Pipe::make();
            attributes.redirect(STDOUT_FILENO, output.writeEnd);
        } else {
            attributes.redirectToNullDevice(STDOUT_FILENO);
        }
        Pipe error = Pipe::make();
        attributes.redirect(STDERR_FILENO, error.writeEnd);
        adopt(attributes.spawn(executable_, arguments_));
        standardOutput_ = std::move(output.readEnd);
        standardError_ = std::move(error.readEnd);
    } catch (const std::system_error& failure) {
        setStage(Stage::exited);
        throw PlatformError::programNotStarted(executable_, failure.code());
    }
}

void ChildProcess::setStage(Stage stage) noexcept {
    const std::lock_guard lock(mutex_);
    stage_ = stage;
}

void ChildProcess::adopt(pid_t child) noexcept {
    const std::lock_guard lock(mutex_);
    pid_ = child;
    pidDescriptor_ = FileDescriptor(::pidfd_open(child, 0));
    stage_ = Stage::running;
    if (isInterruptPending_) {
        sendInterrupt();
    }
}

ProcessExit ChildProcess::waitUntilExit() {
    enforce(Stage::running);
    siginfo_t info{};
    // WNOWAIT leaves the child a zombie: until it is reaped below, with the mutex held, an
    // interrupt cannot meet a process that reuses the pid.
    if (const int error = waitForExit(pid_, WNOWAIT, info); error != 0) {
        setStage(Stage::exited);
        throw PlatformError::programLost(executable_,
                                         std::error_code(error, std::generic_category()));
    }
    const std::lock_guard lock(mutex_);
    waitForExit(pid_, 0, info);
    stage_ = Stage::exited;
    pidDescriptor_.reset();
    return {info.si_code == CLD_EXITED ? ProcessExit::Reason::exit
                                       : ProcessExit::Reason::uncaughtSignal,
            info.si_status};
}

void ChildProcess::interrupt() noexcept {
    const std::lock_guard lock(mutex_);
    if (stage_ == Stage::launching) {
        // The child may be running already, but its pid is not known yet.
        isInterruptPending_ = true;
    } else if (stage_ == Stage::running) {
        sendInterrupt();
    }
}

void ChildProcess::sendInterrupt() const noexcept {
    send(SIGINT);
    // A stopped child handles the signal only once it is continued; a running one ignores SIGCONT.
    send(SIGCONT);
}

void ChildProcess::send(int signal) const noexcept {
    if (pidDescriptor_) {
        ::pidfd_send_signal(pidDescriptor_.get(), signal, nullptr, 0);
    } else {
        ::kill(pid_, signal);
    }
}

} // namespace kestrel
