#pragma once

#include "FileURL.h"

#include <optional>
#include <string>
#include <string_view>

namespace kestrel {

/// "file://" and the path, every byte that is not unreserved or a slash percent-encoded.
std::string fileUri(const FileURL& url);

/// Whether the scheme is "file", in upper or lower case.
bool hasFileScheme(std::string_view uri);

/// The location that a file URI names, or none: for another scheme, another machine's host name, a
/// relative path or an encoded NUL byte. Percent-encoded bytes are decoded to bytes, in no
/// encoding. A "%" that introduces no byte, "?" and "#" are taken as they stand, for senders that
/// do not encode them.
std::optional<FileURL> fileUrlFromUri(std::string_view uri);

} // namespace kestrel
