#pragma once

#include "FileURL.h"

namespace kestrel {

/// Whether something exists there; a symbolic link counts as what it leads to, so a dangling one
/// does not exist. Any thread.
bool fileExists(const FileURL& url) noexcept;

/// Whether a folder exists there, symbolic links followed. Any thread.
bool isFolder(const FileURL& url) noexcept;

} // namespace kestrel
