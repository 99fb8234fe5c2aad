#pragma once

#include "FileDescriptor.h"
#include "FileURL.h"
#include "ProcessExit.h"

#include <sys/types.h>

#include <mutex>
#include <string>
#include <vector>

namespace kestrel {

/// One run of a program, started without a shell, with its stderr, and its stdout if wanted, on
/// pipes. The child inherits stdin (the null device where this program has none), environment,
/// working folder and process group; no signal is blocked or ignored in it.
///
/// One thread calls launch(), the take functions and waitUntilExit(); interrupt() is thread-safe. A
/// child that is still running when its object is destroyed keeps running; a detached thread reaps
/// it when it exits.
class ChildProcess {
  public:
    enum class StandardOutput : unsigned char { pipe, nullDevice };

    /// Starts nothing yet.
    ChildProcess(FileURL executable, std::vector<std::string> arguments,
                 StandardOutput standardOutput);
    ChildProcess(const ChildProcess&) = delete;
    ChildProcess& operator=(const ChildProcess&) = delete;
    ~ChildProcess();

    /// Starts the program. Restores the default disposition of SIGCHLD if it is ignored or has
    /// SA_NOCLDWAIT. Throws PlatformError when the program cannot be started. Requires: not called
    /// before.
    void launch();

    /// Returns the read end of the child's stdout, or none where it is the null device; the caller
    /// owns it. Requires: launch().
    FileDescriptor takeStandardOutput() noexcept;

    /// Returns the read end of the child's stderr; the caller owns it. Requires: launch().
    FileDescriptor takeStandardError() noexcept;

    /// Blocks until the child has exited, and reaps it. Throws PlatformError when its exit status
    /// was lost. Requires: a successful launch(), and not called before.
    ProcessExit waitUntilExit();

    /// Sends SIGINT to the child, never to a process that reuses its pid; continues it if it is
    /// stopped, so that the signal is delivered. No-op before launch() and after the exit; during
    /// launch() the signal is sent as soon as the child exists. Thread-safe; does not block.
    void interrupt() noexcept;

  private:
    enum class Stage : unsigned char { notStarted, launching, running, exited };

    /// Asserts a precondition: a wrong call stops a debug build. Only the thread that changes the
    /// stage calls it.
    void enforce(Stage expected) const noexcept;
    void setStage(Stage stage) noexcept;
    void adopt(pid_t child) noexcept;
    // Both require the mutex to be held and a running child.
    void sendInterrupt() const noexcept;
    void send(int signal) const noexcept;

    FileURL executable_;
    std::vector<std::string> arguments_;
    StandardOutput standardOutputKind_;
    FileDescriptor standardOutput_;
    FileDescriptor standardError_;

    /// Guards the members below. A running child is not reaped while it is held, so `pid_` is not
    /// reused.
    std::mutex mutex_;
    Stage stage_ = Stage::notStarted;
    bool isInterruptPending_ = false;
    pid_t pid_ = -1;
    /// None where the kernel has no pidfd_open().
    FileDescriptor pidDescriptor_;
};

} // namespace kestrel
