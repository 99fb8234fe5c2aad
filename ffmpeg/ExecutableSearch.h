#pragma once

#include "FileURL.h"

#include <optional>
#include <span>
#include <string_view>

namespace kestrel {

/// Returns the first of the absolute paths that is a regular file executable by the effective user,
/// or std::nullopt. Follows symbolic links.
std::optional<FileURL> firstExecutable(std::span<const std::string_view> paths);

} // namespace kestrel
