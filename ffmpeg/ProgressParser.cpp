#include "ProgressParser.h"

#include "ParseNumber.h"

#include <algorithm>

namespace kestrel {

std::optional<double> progressFraction(std::string_view line, double duration) {
    // Microseconds, in spite of its name.
    constexpr std::string_view timeKey = "out_time_ms=";
    constexpr double microsecondsPerSecond = 1'000'000.0;
    if (line.starts_with(timeKey) && duration > 0) {
        if (const std::optional<double> time = parseNumber(line.substr(timeKey.size()))) {
            return std::min(*time / microsecondsPerSecond / duration, 1.0);
        }
    }
    if (isProgressEnd(line)) {
        return 1.0;
    }
    return std::nullopt;
}

bool isProgressEnd(std::string_view line) noexcept {
    return line == "progress=end";
}

} // namespace kestrel
