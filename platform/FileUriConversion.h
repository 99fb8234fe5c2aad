#pragma once

#include "FileURL.h"

#include <optional>
#include <string>
#include <string_view>

namespace kestrel {

/// Returns "file://" and the percent-encoded path. Thread-safe.
std::string uriFromFileUrl(const FileURL& url);

/// Returns whether the scheme is "file", in upper or lower case. Thread-safe.
bool hasFileScheme(std::string_view uri);

/// Returns the location that a file URI names, or none for another scheme, the host name of another
/// machine, a relative path or an encoded NUL byte. The host may be empty, "localhost" or this
/// machine's name. "?" and "#" are part of the path, and so is a malformed percent escape: some
/// drag sources do not encode them. Thread-safe.
std::optional<FileURL> fileUrlFromUri(std::string_view uri);

} // namespace kestrel
