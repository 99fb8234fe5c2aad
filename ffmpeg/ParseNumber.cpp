#include "ParseNumber.h"

#include <clocale>
#include <cmath>
#include <cstdlib>
#include <string>

namespace kestrel {

std::optional<double> parseNumber(std::string_view text) {
    // strtod() also takes leading blanks, a plus sign, hexadecimal digits, "inf" and "nan".
    if (text.starts_with('+') || text.find_first_not_of("0123456789.eE+-") != std::string::npos) {
        return std::nullopt;
    }
    // Not std::from_chars: it does not tell an underflow from an overflow.
    static const locale_t plainLocale = ::newlocale(LC_ALL_MASK, "C", nullptr);
    const std::string terminated(text);
    char* end = nullptr;
    const double value = ::strtod_l(terminated.c_str(), &end, plainLocale);
    const bool isWhole = !text.empty() && end == terminated.c_str() + terminated.size();
    return isWhole && std::isfinite(value) ? std::optional(value) : std::nullopt;
}

} // namespace kestrel
