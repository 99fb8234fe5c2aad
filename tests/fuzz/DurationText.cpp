// DurationScanner: finds what the regular expression finds in the whole text, for every chunking.

#include "DurationScanner.h"
#include "FuzzInput.h"
#include "FuzzTarget.h"
#include "Pieces.h"
#include "Property.h"

#include <QRegularExpression>
#include <QString>

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <vector>

namespace kestrel {

namespace {

double durationIn(const std::vector<std::string_view>& pieces) {
    DurationScanner scanner;
    for (const std::string_view piece : pieces) {
        scanner.feed(piece);
    }
    return scanner.finish();
}

double expectedDuration(const std::string& text) {
    static const QRegularExpression pattern(
        QStringLiteral(R"(Duration: (\d+):(\d+):(\d+(?:\.\d+)?))"));
    const QRegularExpressionMatch match = pattern.match(QString::fromLatin1(text));
    double seconds = 0;
    for (int part = 1; match.hasMatch() && part <= 3; ++part) {
        seconds = seconds * 60 + std::strtod(match.captured(part).toLatin1().constData(), nullptr);
    }
    const bool isReadable =
        static_cast<std::size_t>(match.capturedLength()) <= DurationScanner::maximumLength;
    return std::isfinite(seconds) && isReadable ? seconds : 0;
}

bool isClose(double a, double b) {
    constexpr double precision = 1e-12;
    return std::fabs(a - b) <= precision * std::fabs(b);
}

} // namespace

} // namespace kestrel

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace kestrel;
    const FuzzInput input(data, size);
    const std::string text = input.textWithRuns('0', DurationScanner::maximumLength - 24);
    const double whole = durationIn({text});
    require(std::isfinite(whole) && whole >= 0, "a duration is finite and not negative");
    require(isClose(whole, expectedDuration(text)), "the duration is that of the first match");
    require(durationIn(pieces(text, input.choice())) == whole, "pieces give the same duration");
    if (text.size() < DurationScanner::maximumLength / 2) {
        require(durationIn(singleBytes(text)) == whole, "single bytes give the same duration");
    }
    return 0;
}
