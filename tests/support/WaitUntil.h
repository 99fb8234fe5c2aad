#pragma once

#include "Timeout.h"

#include <chrono>
#include <thread>

namespace kestrel::test {

/// Waits until the condition holds, for as long as tests wait; tells whether it came to hold. Where
/// it takes the event loop to make it hold, `runUntil` does.
template <typename Condition> bool waitUntil(Condition condition) {
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::milliseconds(timeout);
    while (!condition()) {
        if (std::chrono::steady_clock::now() > deadline) {
            return false;
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
    return true;
}

} // namespace kestrel::test
