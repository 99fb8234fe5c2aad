#pragma once

#include <string>
#include <string_view>

namespace kestrel {

/// Returns the last 8 non-empty lines of stderr, joined by LF without a trailing one, as UTF-8 with
/// replacement characters for invalid bytes. Only LF ends a line; all other characters are kept.
std::string diagnosticsTail(std::string_view bytes);

} // namespace kestrel
