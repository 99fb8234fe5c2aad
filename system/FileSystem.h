#pragma once

#include "FileURL.h"

#include <system_error>

namespace kestrel {

// Not std::filesystem: where the C++ library's time_t has 32 bits, it reports folders dated after
// 2038 as unreadable.

/// Returns whether the path exists. Follows symbolic links: false for a dangling one. Thread-safe.
bool fileExists(const FileURL& url) noexcept;

/// Returns whether the path is a folder. Follows symbolic links. Thread-safe.
bool isFolder(const FileURL& url) noexcept;

/// Creates a folder and its missing parents. Returns no error iff the folder exists afterwards,
/// whoever created it. Thread-safe.
std::error_code createFolders(const FileURL& folder);

} // namespace kestrel
