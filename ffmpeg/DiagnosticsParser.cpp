#include "DiagnosticsParser.h"

#include <QString>
#include <QStringDecoder>

#include <cstddef>

namespace kestrel {

namespace {

constexpr int tailLineCount = 8;

QString decoded(std::string_view bytes) {
    // Stateless: a sequence truncated at the end is replaced, not buffered.
    QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::ConvertInitialBom |
                                                     QStringDecoder::Flag::Stateless);
    return decoder.decode(QByteArrayView(bytes.data(), static_cast<qsizetype>(bytes.size())));
}

/// Returns the offset of the first of the last 8 non-empty lines.
std::size_t tailStart(std::string_view bytes) {
    std::size_t start = bytes.size();
    std::size_t end = bytes.size();
    for (int lines = 0; lines < tailLineCount && end > 0;) {
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

std::string diagnosticsTail(std::string_view bytes) {
    // LF never occurs inside a multi-byte UTF-8 sequence, so lines can be split before decoding.
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
