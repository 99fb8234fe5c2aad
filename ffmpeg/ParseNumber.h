#pragma once

#include <optional>
#include <string_view>

namespace kestrel {

/// The finite decimal number that the whole text spells, with or without an exponent, or none. No
/// plus sign, no blanks; a decimal point in every locale. One too close to zero to be told from it
/// is 0.
std::optional<double> parseNumber(std::string_view text);

} // namespace kestrel
