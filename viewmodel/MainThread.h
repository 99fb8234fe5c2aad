#pragma once

#include <functional>

namespace kestrel {

/// Runs the task in the main thread's event loop, in a turn of its own, after all tasks handed over
/// before it. Any thread, but the first call must come from the main one, with a QCoreApplication.
void runOnMainThread(std::function<void()> task);

} // namespace kestrel
