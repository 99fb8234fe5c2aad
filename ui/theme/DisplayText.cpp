#include "DisplayText.h"

#include "BidiText.h"

#include <QChar>
#include <QGuiApplication>
#include <QList>

#include <algorithm>
#include <cstddef>
#include <utility>

namespace kestrel {
namespace {

constexpr std::size_t maxMessageBytes = 4096;
/// Enough for every message that displayMessage() returns.
constexpr qsizetype maxToolTipLength = 4200;

constexpr char16_t ellipsis = u'\u2026';

bool breaksLine(QChar character) {
    switch (character.category()) {
    case QChar::Other_Control:
    case QChar::Separator_Line:
    case QChar::Separator_Paragraph:
        return true;
    default:
        return false;
    }
}

QString withoutControls(QString text, bool isMultiline) {
    for (QChar& character : text) {
        if (isMultiline && character == u'\n') {
            continue;
        }
        if (isMultiline && character == u'\t') {
            character = u' ';
        } else if (breaksLine(character)) {
            character = QChar::ReplacementCharacter;
        }
    }
    return text;
}

/// A character has at most three; more are invalid bytes, each of which can be cut off.
constexpr int maxContinuationBytes = 3;

bool isContinuationByte(char byte) {
    return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80U;
}

/// Returns at most `limit` bytes from the start, not ending inside a character. Requires: more
/// bytes than that.
std::string_view prefix(std::string_view bytes, std::size_t limit) {
    std::size_t end = limit;
    for (int i = 0; i < maxContinuationBytes && isContinuationByte(bytes[end]); ++i) {
        --end;
    }
    return bytes.substr(0, end);
}

/// Returns at most `limit` bytes from the end, not starting inside a character. Requires: more
/// bytes than that.
std::string_view suffix(std::string_view bytes, std::size_t limit) {
    std::size_t start = bytes.size() - limit;
    for (int i = 0; i < maxContinuationBytes && isContinuationByte(bytes[start]); ++i) {
        ++start;
    }
    return bytes.substr(start);
}

QString multilineText(std::string_view bytes) {
    QString text = QString::fromUtf8(bytes);
    text.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
    text.replace(u'\r', u'\n');
    text.replace(QChar::LineSeparator, u'\n');
    text.replace(QChar::ParagraphSeparator, u'\n');
    return withoutControls(std::move(text), true);
}

bool isDirectional(char32_t character) {
    switch (QChar::direction(character)) {
    case QChar::DirR:
    case QChar::DirAL:
    case QChar::DirAN:
    case QChar::DirLRE:
    case QChar::DirLRO:
    case QChar::DirRLE:
    case QChar::DirRLO:
    case QChar::DirPDF:
    case QChar::DirLRI:
    case QChar::DirRLI:
    case QChar::DirFSI:
    case QChar::DirPDI:
        return true;
    default:
        return false;
    }
}

} // namespace

QString displayText(std::string_view bytes) {
    return withoutControls(QString::fromUtf8(bytes), false);
}

QString displayMessage(std::string_view bytes) {
    if (bytes.size() <= maxMessageBytes) {
        return multilineText(bytes);
    }
    constexpr std::size_t half = maxMessageBytes / 2;
    return multilineText(prefix(bytes, half)) + QStringLiteral("\n…\n") +
           multilineText(suffix(bytes, half));
}

QString isolated(const QString& text) {
    const QList<uint> characters = text.toUcs4();
    if (!QGuiApplication::isRightToLeft() &&
        std::none_of(characters.begin(), characters.end(), isDirectional)) {
        return text;
    }
    return bidiIsolated(text);
}

QString toolTipText(const QString& text) {
    constexpr qsizetype half = maxToolTipLength / 2;
    const QString shown = text.size() > maxToolTipLength
                              ? text.left(half) + QChar(ellipsis) + text.right(half)
                              : text;
    // QToolTip of Qt 6.4 to 6.11 guesses whether its text is markup; escaped markup is unambiguous.
    return QStringLiteral("<p style=\"white-space:pre-wrap\">%1</p>").arg(shown.toHtmlEscaped());
}

} // namespace kestrel
