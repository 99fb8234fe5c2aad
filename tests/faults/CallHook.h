#pragma once

#include <functional>

namespace kestrel::test {

/// Interposes pipe2(), posix_spawn(), pidfd_open(), pthread_create(), mkdir(), waitid() or read()
/// from a pipe for its lifetime. Throws std::logic_error if that call is hooked already.
/// Thread-safe.
class CallHook {
  public:
    enum class Call : unsigned char {
        pipe,
        spawn,
        openProcess,
        thread,
        makeFolder,
        waitForExit,
        readPipe
    };

    /// Runs before each call, on the calling thread, with the number of the call, counted from 1.
    /// Returns the errno to fail it with, or 0 to let it through.
    using Before = std::function<int(int count)>;

    CallHook(Call call, Before before);
    CallHook(const CallHook&) = delete;
    CallHook& operator=(const CallHook&) = delete;
    ~CallHook();

    /// Fails call number `count`, counted from 1.
    static Before failing(int count, int error);

  private:
    Call call_;
};

} // namespace kestrel::test
