#include "ParseNumber.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstddef>
#include <system_error>

namespace kestrel {

namespace {

/// Whether a number that is beyond the range of a double is so because it is too close to zero.
bool isTooSmall(std::string_view number) {
    const std::string_view digits = number.substr(0, number.find_first_of("eE"));
    const std::size_t point = std::min(digits.find('.'), digits.size());
    const std::size_t first = digits.find_first_of("123456789");
    // How many places the first digit that counts is before the point; negative behind it.
    const auto places = static_cast<long long>(point) - static_cast<long long>(first);
    std::string_view exponentText = number.substr(std::min(digits.size() + 1, number.size()));
    const bool isNegative = exponentText.starts_with('-');
    exponentText.remove_prefix(exponentText.starts_with('+') ? 1 : 0);
    int exponent = 0;
    const auto parsed =
        std::from_chars(exponentText.data(), exponentText.data() + exponentText.size(), exponent);
    if (parsed.ec == std::errc::result_out_of_range) {
        return isNegative;
    }
    return places + exponent <= 0;
}

} // namespace

std::optional<double> parseNumber(std::string_view text) {
    double value = 0;
    const char* const end = text.data() + text.size();
    const auto [rest, error] = std::from_chars(text.data(), end, value);
    if (rest == end && error == std::errc::result_out_of_range && isTooSmall(text)) {
        return 0;
    }
    if (error != std::errc() || rest != end || !std::isfinite(value)) {
        return std::nullopt;
    }
    return value;
}

} // namespace kestrel
