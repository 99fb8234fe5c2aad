#include "DiagnosticsTail.h"

#include <QString>
#include <QStringDecoder>

#include <algorithm>
#include <utility>

namespace kestrel {

namespace {

QString decoded(std::string_view bytes) {
    // Stateless: a sequence truncated at the end is replaced, not buffered.
    QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::ConvertInitialBom |
                                                     QStringDecoder::Flag::Stateless);
    return decoder.decode(QByteArrayView(bytes.data(), static_cast<qsizetype>(bytes.size())));
}

} // namespace

void DiagnosticsTail::feed(std::string_view bytes) {
    while (!bytes.empty()) {
        const std::size_t end = bytes.find('\n');
        line_ += bytes.substr(0, end);
        if (end == std::string_view::npos) {
            return;
        }
        endLine();
        bytes.remove_prefix(end + 1);
    }
}

std::string DiagnosticsTail::finish() {
    endLine();
    std::string tail;
    for (std::size_t n = endedLines_ - std::min(endedLines_, lineCount); n < endedLines_; ++n) {
        if (!tail.empty()) {
            tail += '\n';
        }
        // LF never occurs inside a multi-byte UTF-8 sequence, so lines can be decoded one by one.
        tail += decoded(lines_.at(n % lineCount)).toStdString();
    }
    return tail;
}

void DiagnosticsTail::endLine() {
    if (!line_.empty()) {
        // The line that is dropped gives its memory back.
        lines_.at(endedLines_ % lineCount) = std::exchange(line_, {});
        ++endedLines_;
    }
}

} // namespace kestrel
