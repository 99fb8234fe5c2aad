#pragma once

#include <string>
#include <string_view>

namespace kestrel {

/// Returns the bytes of a path with all but unreserved characters and slashes percent-encoded.
/// Thread-safe.
std::string percentEncoded(std::string_view path);

/// Decodes percent escapes to raw bytes. Malformed escapes are kept verbatim;
/// QByteArray::fromPercentEncoding of Qt 6.4 to 6.11 decodes them to arbitrary bytes. Thread-safe.
std::string percentDecoded(std::string_view text);

} // namespace kestrel
