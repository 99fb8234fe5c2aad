#pragma once

#include "ProcessCounts.h"

namespace kestrel::test {

/// Fails the test if this process has more descriptors, children or threads at the guard's
/// destruction than at its construction. Waits up to `timeout` for them to go.
class LeakGuard {
  public:
    LeakGuard();
    LeakGuard(const LeakGuard&) = delete;
    LeakGuard& operator=(const LeakGuard&) = delete;
    ~LeakGuard();

  private:
    ProcessCounts before_;
};

} // namespace kestrel::test
