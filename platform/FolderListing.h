#pragma once

#include "FileURL.h"

#include <string_view>
#include <vector>

namespace kestrel {

/// Returns all files and folders below `folder`, recursively. Hidden entries (leading dot) are
/// skipped with their contents; packages are listed but not entered; symbolic links are listed but
/// not followed, except `folder` itself. An unreadable subfolder is listed without contents; an
/// unreadable `folder` yields an empty list.
///
/// Depth-first, each folder's entries in byte order of their names. Thread-safe.
std::vector<FileURL> listFolder(const FileURL& folder);

/// Returns whether a folder of this name is a package: a folder presented to users as one file,
/// such as an application bundle. Decided by the extension, case-insensitively.
bool isPackageName(std::string_view name);

} // namespace kestrel
