#pragma once

#include <optional>
#include <string_view>

namespace kestrel {

/// Returns the finite decimal number that the whole text spells, with or without an exponent, or
/// none. The decimal point is "." in every locale; a plus sign and blanks are errors. An underflow
/// gives the nearest number, such as 0. Thread-safe.
std::optional<double> parseNumber(std::string_view text);

} // namespace kestrel
