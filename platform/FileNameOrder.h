#pragma once

#include "FileURL.h"

#include <vector>

namespace kestrel {

/// Stable natural sort by last path component: case-insensitive, runs of digits by value ("2.opus"
/// before "10.opus"), Unicode collation for English whatever the user's locale is. Folders are not
/// compared; bytes that are not UTF-8 compare as replacement characters. Thread-safe.
void sortByFileName(std::vector<FileURL>& urls);

} // namespace kestrel
