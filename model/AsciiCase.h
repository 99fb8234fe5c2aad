#pragma once

#include <string>
#include <string_view>

namespace kestrel {

/// Returns the text with ASCII letters in lower case and other bytes unchanged. Locale-independent.
std::string asciiLowercased(std::string_view text);

} // namespace kestrel
