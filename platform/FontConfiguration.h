#pragma once

#include <thread>

namespace kestrel {

/// Reads fontconfig's configuration on another thread, so that Qt does not read it on the main
/// thread with the first text. Returns that thread, or none if it cannot be started.
std::jthread readFontConfiguration();

} // namespace kestrel
