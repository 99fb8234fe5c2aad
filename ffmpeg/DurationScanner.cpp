#include "DurationScanner.h"

#include "ParseNumber.h"

#include <QRegularExpression>
#include <QString>

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace kestrel {

namespace {

const QRegularExpression& durationPattern() {
    static const QRegularExpression pattern(
        QStringLiteral(R"(Duration: (\d+):(\d+):(\d+(?:\.\d+)?))"));
    return pattern;
}

/// Decodes as Latin-1: the pattern is ASCII, so invalid or truncated UTF-8 does not matter.
QString textOf(std::string_view bytes) {
    return QString::fromLatin1(bytes.data(), static_cast<qsizetype>(bytes.size()));
}

double seconds(const QRegularExpressionMatch& match) {
    const auto number = [&match](int group) {
        return parseNumber(match.captured(group).toStdString());
    };
    const std::optional<double> hours = number(1);
    const std::optional<double> minutes = number(2);
    const std::optional<double> seconds = number(3);
    if (!hours || !minutes || !seconds) {
        return 0;
    }
    const double total = *hours * 3600 + *minutes * 60 + *seconds;
    return std::isfinite(total) ? total : 0;
}

/// Collapses runs of digits to one, which does not affect what can still match.
void collapseDigitRuns(std::string& text) {
    const auto isDigit = [](char c) { return c >= '0' && c <= '9'; };
    text.erase(std::unique(text.begin(), text.end(),
                           [&](char a, char b) { return isDigit(a) && isDigit(b); }),
               text.end());
}

} // namespace

void DurationScanner::feed(std::string_view bytes) {
    if (seconds_) {
        return;
    }
    pending_ += bytes;
    // A match that reaches the end of the chunk is only partial: more digits may follow.
    const QRegularExpressionMatch match =
        durationPattern().match(textOf(pending_), 0, QRegularExpression::PartialPreferFirstMatch);
    if (match.capturedStart(0) != 0) {
        isOverlong_ = false;
    }
    if (match.hasMatch()) {
        const auto length = static_cast<std::size_t>(match.capturedLength(0));
        seconds_ = isOverlong_ || length > maximumLength ? 0 : seconds(match);
    } else if (match.hasPartialMatch()) {
        pending_.erase(0, static_cast<std::size_t>(match.capturedStart(0)));
        if (pending_.size() > maximumLength) {
            isOverlong_ = true;
            collapseDigitRuns(pending_);
        }
    } else {
        pending_.clear();
    }
}

double DurationScanner::finish() {
    if (!seconds_) {
        const QRegularExpressionMatch match = durationPattern().match(textOf(pending_));
        seconds_ = match.hasMatch() && !isOverlong_ ? seconds(match) : 0;
    }
    return *seconds_;
}

} // namespace kestrel
