#pragma once

#include <cstddef>
#include <string>

namespace kestrel::test {

/// Counts this process's descriptors, children and threads when it is made, and fails the test when
/// any of them has not gone back to that within ten seconds of its end.
class LeakGuard {
  public:
    LeakGuard();
    LeakGuard(const LeakGuard&) = delete;
    LeakGuard& operator=(const LeakGuard&) = delete;
    ~LeakGuard();

  private:
    struct Counts {
        std::size_t descriptors = 0;
        /// Living ones and zombies.
        std::size_t children = 0;
        std::size_t threads = 0;

        static Counts now();

        std::string text() const;
    };

    Counts before_;
};

} // namespace kestrel::test
