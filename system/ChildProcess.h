#pragma once

#include "FileDescriptor.h"
#include "FileURL.h"
#include "ProcessExit.h"

#include <sys/types.h>

#include <mutex>
#include <string>
#include <utility>
#include <vector>

namespace kestrel {

/// One run of a program, given by path and started without a shell, with its standard error, and
/// its standard output if wanted, on pipes of their own. Standard input, environment, working
/// folder and process group are this program's; no signal is blocked or ignored in the child. The
/// null device stands in for a standard input that this program does not have.
///
/// One thread launches, reads and waits; `interrupt` may be called by any other at any time. A
/// child that nobody waited for when its object dies is left to end by itself, and reaped when it
/// has.
class ChildProcess {
  public:
    enum class StandardOutput : unsigned char { pipe, nullDevice };

    /// Starts nothing yet.
    ChildProcess(FileURL executable, std::vector<std::string> arguments,
                 StandardOutput standardOutput);
    ChildProcess(const ChildProcess&) = delete;
    ChildProcess& operator=(const ChildProcess&) = delete;
    ~ChildProcess();

    /// Starts the program. Throws PlatformError when it cannot be started. Once only. Where this
    /// program ignores SIGCHLD, it does so no longer: the system would not tell how a child ended.
    void launch();

    /// The reading end of the child's standard output; none where it goes to the null device. Yours
    /// from the call on.
    FileDescriptor takeStandardOutput() noexcept { return std::move(standardOutput_); }

    /// The reading end of the child's standard error. Yours from the call on.
    FileDescriptor takeStandardError() noexcept { return std::move(standardError_); }

    /// Blocks until the launched child has exited. Throws PlatformError when the system does not
    /// tell how it ended. Once only.
    ProcessExit waitUntilExit();

    /// Sends SIGINT to the child, and never to a process that has come to its number since; a child
    /// that has been stopped is continued, so that the signal reaches it. Nothing happens before
    /// the launch and after the exit; during the launch the signal follows as soon as there is a
    /// child. Any thread; does not block.
    void interrupt() noexcept;

  private:
    enum class Stage : unsigned char { notStarted, launching, running, exited };

    void setStage(Stage stage) noexcept;
    void adopt(pid_t child) noexcept;
    /// Both need the mutex and a running child.
    void sendInterrupt() const noexcept;
    void send(int signal) const noexcept;

    FileURL executable_;
    std::vector<std::string> arguments_;
    StandardOutput standardOutputKind_;
    FileDescriptor standardOutput_;
    FileDescriptor standardError_;

    /// Guards what follows. While it is held, a running child is not reaped, so its number is its
    /// own.
    std::mutex mutex_;
    Stage stage_ = Stage::notStarted;
    bool isInterruptDue_ = false;
    pid_t pid_ = -1;
    /// None where the kernel has no descriptors for processes.
    FileDescriptor pidDescriptor_;
};

} // namespace kestrel
