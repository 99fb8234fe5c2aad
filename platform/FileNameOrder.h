#pragma once

#include "FileURL.h"

#include <vector>

namespace kestrel {

/// Sorts by last path component the way a file manager shows names: ignoring case, runs of digits
/// by their value ("2.opus" before "10.opus"), by the Unicode collation for English whatever the
/// user's locale is. Locations whose names compare equal keep their order; folders play no part.
/// Bytes that are not UTF-8 count as replacement characters. Any thread.
void sortByFileName(std::vector<FileURL>& urls);

} // namespace kestrel
