#pragma once

#include "FileURL.h"

#include <optional>
#include <span>
#include <string_view>

namespace kestrel {

/// The first of the absolute paths that names a regular file which this user may execute, symbolic
/// links followed, or none.
std::optional<FileURL> firstExecutable(std::span<const std::string_view> paths);

} // namespace kestrel
