#pragma once

#include <string>
#include <string_view>

namespace kestrel {

/// The text with A to Z in lower case and every other byte as it was, whatever the locale.
std::string asciiLowercased(std::string_view text);

} // namespace kestrel
