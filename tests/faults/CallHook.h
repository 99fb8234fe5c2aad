#pragma once

#include <functional>

namespace kestrel::test {

/// What stands between this program and a system call for as long as it lives. One at a time for
/// each call.
class CallHook {
  public:
    enum class Call : unsigned char { pipe, spawn, openProcess, thread, makeFolder, waitForExit };

    /// Runs before the call, on its thread, with the number of calls since the hook was set, this
    /// one included. Returns the error number with which the call fails, or 0 to let it happen.
    using Before = std::function<int(int count)>;

    CallHook(Call call, Before before);
    CallHook(const CallHook&) = delete;
    CallHook& operator=(const CallHook&) = delete;
    ~CallHook();

    /// A hook with which that call, counted from 1, fails.
    static Before failing(int count, int error);

  private:
    Call call_;
};

} // namespace kestrel::test
