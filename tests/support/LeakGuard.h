#pragma once

#include "ProcessCounts.h"

namespace kestrel::test {

/// Counts this process's descriptors, children and threads when it is made, and fails the test when
/// any of them does not go back to that after its end, for as long as tests wait.
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
