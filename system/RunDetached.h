#pragma once

#include <future>
#include <thread>
#include <utility>

namespace kestrel {

/// Runs the function on a new detached thread and returns the future of its result or exception.
/// Throws std::system_error when no thread can be created.
template <typename Function> auto runDetached(Function function) {
    std::packaged_task task(std::move(function));
    auto result = task.get_future();
    std::thread(std::move(task)).detach();
    return result;
}

} // namespace kestrel
