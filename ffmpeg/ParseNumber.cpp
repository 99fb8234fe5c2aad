#include "ParseNumber.h"

#include <charconv>
#include <cmath>
#include <system_error>

namespace kestrel {

std::optional<double> parseNumber(std::string_view text) {
    double value = 0;
    const char* const end = text.data() + text.size();
    const auto [rest, error] = std::from_chars(text.data(), end, value);
    if (error != std::errc() || rest != end || !std::isfinite(value)) {
        return std::nullopt;
    }
    return value;
}

} // namespace kestrel
