#pragma once

#include "Timeout.h"

#include <chrono>
#include <thread>

namespace kestrel::test {

/// Polls until the condition holds or `timeout` expires. Returns whether it held. For conditions
/// that need the event loop, use `runUntil`.
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
