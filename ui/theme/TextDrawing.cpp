#include "TextDrawing.h"

#include <QFont>
#include <QPainter>
#include <QStyle>
#include <QTextLayout>

namespace kestrel {

void drawAligned(QPainter& painter, const QRect& rect, Qt::LayoutDirection layout,
                 Qt::Alignment alignment, const QString& text, bool wraps) {
    painter.setLayoutDirection(text.isRightToLeft() ? Qt::RightToLeft : Qt::LeftToRight);
    const Qt::Alignment side = QStyle::visualAlignment(layout, alignment) | Qt::AlignAbsolute;
    if (wraps) {
        // QPainter's own wrapping (Qt 6.4 to 6.11) shifts right-to-left lines by their trailing
        // space.
        const QStringList lines = wrappedLines(text, painter.font(), rect.width());
        painter.drawText(rect, static_cast<int>(side), lines.join(u'\n'));
    } else {
        painter.drawText(rect, static_cast<int>(side) | static_cast<int>(Qt::TextSingleLine), text);
    }
}

QStringList wrappedLines(const QString& text, const QFont& font, int width,
                         QTextOption::WrapMode mode, int maxLines) {
    QString lines = text;
    lines.replace(u'\n', QChar(QChar::LineSeparator));
    QTextOption option;
    option.setWrapMode(mode);
    QTextLayout layout(lines, font);
    layout.setTextOption(option);

    QStringList wrapped;
    layout.beginLayout();
    while (wrapped.size() < maxLines) {
        QTextLine line = layout.createLine();
        if (!line.isValid()) {
            break;
        }
        line.setLineWidth(width);
        const bool isLast = wrapped.size() + 1 == maxLines;
        QString part =
            isLast ? lines.mid(line.textStart()) : lines.mid(line.textStart(), line.textLength());
        // A line includes its trailing separator or spaces, which would show when right-aligned.
        // The last line may contain further separators.
        while (!part.isEmpty() && part.back().isSpace()) {
            part.chop(1);
        }
        part.replace(QChar(QChar::LineSeparator), QChar(u' '));
        wrapped += part;
    }
    layout.endLayout();
    return wrapped.isEmpty() ? QStringList{QString()} : wrapped;
}

} // namespace kestrel
