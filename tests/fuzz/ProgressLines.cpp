// LineSplitter and progressFraction: same lines and fractions as a simple reference implementation,
// for every chunking.

#include "FuzzInput.h"
#include "FuzzTarget.h"
#include "LineSplitter.h"
#include "Pieces.h"
#include "ProgressParser.h"
#include "Property.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <limits>
#include <optional>
#include <string>
#include <vector>

namespace kestrel {

namespace {

using Lines = std::vector<std::string>;

Lines linesOf(const std::vector<std::string_view>& pieces) {
    Lines lines;
    LineSplitter splitter([&lines](std::string_view line) { lines.emplace_back(line); });
    for (const std::string_view piece : pieces) {
        splitter.feed(piece);
    }
    splitter.finish();
    return lines;
}

/// Normalises line endings to LF, then splits.
Lines expectedLines(const std::string& text) {
    std::string unified = text;
    for (std::size_t at = 0; (at = unified.find("\r\n", at)) != std::string::npos;) {
        unified.erase(at, 1);
    }
    std::replace(unified.begin(), unified.end(), '\r', '\n');
    Lines lines;
    std::size_t start = 0;
    for (std::size_t end = 0; (end = unified.find('\n', start)) != std::string::npos;) {
        lines.push_back(unified.substr(start, end - start));
        start = end + 1;
    }
    if (start < unified.size()) {
        lines.push_back(unified.substr(start));
    }
    std::erase_if(lines, [](const std::string& line) {
        return line.size() > LineSplitter::maximumLineLength;
    });
    return lines;
}

std::size_t digitsAt(const std::string& text, std::size_t start) {
    const std::size_t end = text.find_first_not_of("0123456789", start);
    return std::min(end, text.size()) - std::min(start, text.size());
}

/// A decimal number with an optional exponent; no whitespace, no plus sign, no other base.
bool isDecimal(const std::string& text) {
    std::size_t at = text.starts_with('-') ? 1 : 0;
    std::size_t digits = digitsAt(text, at);
    at += digits;
    if (at < text.size() && text[at] == '.') {
        const std::size_t decimals = digitsAt(text, at + 1);
        digits += decimals;
        at += decimals + 1;
    }
    if (digits == 0) {
        return false;
    }
    if (at < text.size() && (text[at] == 'e' || text[at] == 'E')) {
        ++at;
        if (at < text.size() && (text[at] == '+' || text[at] == '-')) {
            ++at;
        }
        const std::size_t exponent = digitsAt(text, at);
        if (exponent == 0) {
            return false;
        }
        at += exponent;
    }
    return at == text.size();
}

/// A duration in seconds: what a probe may return, down to the smallest and up to the largest
/// double, and what it never returns.
double durationFor(std::uint8_t choice) {
    using Limits = std::numeric_limits<double>;
    constexpr std::array<double, 10> durations = {
        0, 10, 205.48, 0.01, 359999.99, 1e300, Limits::max(), Limits::min(), Limits::denorm_min(),
        -1};
    return durations[choice % durations.size()];
}

void checkTime(const std::string& number, double duration, std::optional<double> fraction) {
    const double time = isDecimal(number) ? std::strtod(number.c_str(), nullptr) : INFINITY;
    if (!std::isfinite(time) || !(duration > 0)) {
        require(!fraction, "no fraction without a finite time and a duration");
        return;
    }
    require(fraction.has_value(), "a finite time has a fraction");
    require(*fraction == std::min(time / 1e6 / duration, 1.0),
            "the fraction is the time over the duration");
}

void checkFraction(const std::string& line, double duration) {
    const std::optional<double> fraction = progressFraction(line, duration);
    const std::string key = "out_time_ms=";
    if (line.starts_with(key)) {
        checkTime(line.substr(key.size()), duration, fraction);
    } else if (line == "progress=end") {
        require(fraction == 1.0, "progress=end gives 1");
    } else {
        require(!fraction, "other lines have no fraction");
    }
    if (fraction) {
        require(!std::isnan(*fraction), "a fraction is a number");
        require(*fraction <= 1, "a fraction is at most 1");
    }
}

} // namespace

} // namespace kestrel

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace kestrel;
    constexpr std::size_t mostSingleBytes = 4096;
    const FuzzInput input(data, size);
    const std::string text = input.textWithRuns('0', LineSplitter::maximumLineLength - 16);
    const Lines lines = linesOf({text});
    require(lines == expectedLines(text), "lines are split at line endings");
    require(linesOf(pieces(text, input.choice())) == lines, "pieces give the same lines");
    if (text.size() <= mostSingleBytes) {
        require(linesOf(singleBytes(text)) == lines, "single bytes give the same lines");
    }
    for (const std::string& line : lines) {
        checkFraction(line, durationFor(input.choice()));
    }
    return 0;
}
