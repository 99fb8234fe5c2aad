#pragma once

#include <optional>
#include <string_view>

namespace kestrel {

/// The finite number that the whole text spells, with a decimal point in every locale, or none.
std::optional<double> parseNumber(std::string_view text);

} // namespace kestrel
