#pragma once

#include <string>
#include <string_view>

namespace kestrel {

/// Returns the bytes of a path with all but unreserved characters and slashes percent-encoded.
/// Thread-safe.
std::string percentEncoded(std::string_view path);

/// Returns the bytes that percent-encoded text stands for, in no encoding. A "%" that two
/// hexadecimal digits do not follow stays as it is, where QByteArray::fromPercentEncoding of Qt 6.4
/// to 6.11 makes up a byte. Thread-safe.
std::string percentDecoded(std::string_view text);

} // namespace kestrel
