#pragma once

#include "FileURL.h"

#include <system_error>

namespace kestrel {

// std::filesystem has these too, but where the C++ library's time_t has 32 bits it takes a folder
// dated after 2038 for one that cannot be read.

/// Returns whether something exists there. Follows symbolic links: a dangling one does not exist.
/// Thread-safe.
bool fileExists(const FileURL& url) noexcept;

/// Returns whether a folder exists there. Follows symbolic links. Thread-safe.
bool isFolder(const FileURL& url) noexcept;

/// Creates a folder and its missing parents. Returns no error iff the folder is there afterwards,
/// whoever created it. Thread-safe.
std::error_code createFolders(const FileURL& folder);

} // namespace kestrel
