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
constexpr qsizetype maxToolTipLength = 1000;

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

/// At most `limit` bytes from the start, not ending inside a character.
std::string_view prefix(std::string_view bytes, std::size_t limit) {
    if (bytes.size() <= limit) {
        return bytes;
    }
    std::size_t end = limit;
    while (end > 0 && (static_cast<unsigned char>(bytes[end]) & 0xC0U) == 0x80U) {
        --end;
    }
    return bytes.substr(0, end);
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
    const std::string_view shown = prefix(bytes, maxMessageBytes);
    QString text = QString::fromUtf8(shown);
    text.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
    text.replace(u'\r', u'\n');
    text.replace(QChar::LineSeparator, u'\n');
    text.replace(QChar::ParagraphSeparator, u'\n');
    text = withoutControls(std::move(text), true);
    if (shown.size() < bytes.size()) {
        text += ellipsis;
    }
    return text;
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
    const bool isLong = text.size() > maxToolTipLength;
    const QString shown = isLong ? text.left(maxToolTipLength) + QChar(ellipsis) : text;
    // QToolTip of Qt 6.4 to 6.11 guesses whether its text is markup; escaped markup is unambiguous.
    return QStringLiteral("<p style=\"white-space:pre-wrap\">%1</p>").arg(shown.toHtmlEscaped());
}

} // namespace kestrel
