#pragma once

#include <functional>

namespace kestrel {

/// Runs the task on the main thread, in its own event-loop iteration, after all tasks posted
/// before. Thread-safe; other threads block while the queue is full. Requires: the first call comes
/// from the main thread, with a QCoreApplication.
void runOnMainThread(std::function<void()> task);

} // namespace kestrel
