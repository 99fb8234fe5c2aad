#pragma once

#include <QString>

#include <thread>

namespace kestrel {

/// Reads fontconfig's configuration on another thread, so that Qt does not read it on the main
/// thread with the first text, and looks up the usual families. Returns that thread, or none if it
/// cannot be started.
std::jthread readFontConfiguration();

/// Returns the installed family that fontconfig has for a family, which may be generic, such as
/// "monospace". Not thread-safe. Requires: the thread of readFontConfiguration, which calls it, has
/// ended.
QString installedFontFamily(const QString& family);

} // namespace kestrel
