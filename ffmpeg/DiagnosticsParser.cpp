#include "DiagnosticsParser.h"

#include "ParseNumber.h"

#include <QRegularExpression>
#include <QString>
#include <QStringDecoder>

#include <cstddef>
#include <optional>

namespace kestrel {

namespace {

constexpr int tailLength = 8;

QString decoded(std::string_view bytes) {
    // Stateless, so that a sequence cut short at the end is replaced and not kept for later.
    QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::ConvertInitialBom |
                                                     QStringDecoder::Flag::Stateless);
    return decoder.decode(QByteArrayView(bytes.data(), static_cast<qsizetype>(bytes.size())));
}

std::optional<double> capturedNumber(const QRegularExpressionMatch& match, int group) {
    return parseNumber(match.captured(group).toStdString());
}

/// Where the last lines of the text begin: before the earliest of the last 8 that are not empty.
std::size_t tailStart(std::string_view bytes) {
    std::size_t start = bytes.size();
    std::size_t end = bytes.size();
    for (int lines = 0; lines < tailLength && end > 0;) {
        const std::size_t lineFeed = bytes.rfind('\n', end - 1);
        const std::size_t lineStart = lineFeed == std::string_view::npos ? 0 : lineFeed + 1;
        if (lineStart < end) {
            start = lineStart;
            ++lines;
        }
        end = lineStart == 0 ? 0 : lineFeed;
    }
    return start;
}

} // namespace

double durationInDiagnostics(std::string_view bytes) {
    static const QRegularExpression pattern(
        QStringLiteral(R"(Duration: (\d+):(\d+):(\d+(?:\.\d+)?))"));
    const QRegularExpressionMatch match = pattern.match(decoded(bytes));
    if (!match.hasMatch()) {
        return 0;
    }
    const std::optional<double> hours = capturedNumber(match, 1);
    const std::optional<double> minutes = capturedNumber(match, 2);
    const std::optional<double> seconds = capturedNumber(match, 3);
    if (!hours || !minutes || !seconds) {
        return 0;
    }
    return *hours * 3600 + *minutes * 60 + *seconds;
}

std::string diagnosticsTail(std::string_view bytes) {
    // An LF is never part of a longer UTF-8 sequence, so lines can be cut before they are decoded.
    std::string_view rest = bytes.substr(tailStart(bytes));
    std::string tail;
    while (!rest.empty()) {
        const std::size_t end = rest.find('\n');
        const std::string_view line = rest.substr(0, end);
        if (!line.empty()) {
            if (!tail.empty()) {
                tail += '\n';
            }
            tail += decoded(line).toStdString();
        }
        rest.remove_prefix(end == std::string_view::npos ? rest.size() : end + 1);
    }
    return tail;
}

} // namespace kestrel
