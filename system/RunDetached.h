#pragma once

#include <future>
#include <thread>
#include <utility>

namespace kestrel {

/// Runs the function on a thread of its own, which nothing joins, and hands over its result or
/// exception. Throws std::system_error when there is no thread to be had.
template <typename Function> auto runDetached(Function function) {
    std::packaged_task task(std::move(function));
    auto result = task.get_future();
    std::thread(std::move(task)).detach();
    return result;
}

} // namespace kestrel
