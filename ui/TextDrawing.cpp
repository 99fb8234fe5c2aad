#include "TextDrawing.h"

#include <QPainter>
#include <QStyle>

namespace kestrel {

void drawAligned(QPainter& painter, const QRect& rect, Qt::LayoutDirection layout,
                 Qt::Alignment alignment, const QString& text, bool wraps) {
    painter.setLayoutDirection(text.isRightToLeft() ? Qt::RightToLeft : Qt::LeftToRight);
    const Qt::Alignment side = QStyle::visualAlignment(layout, alignment) | Qt::AlignAbsolute;
    const int lines = static_cast<int>(wraps ? Qt::TextWordWrap : Qt::TextSingleLine);
    painter.drawText(rect, static_cast<int>(side) | lines, text);
}

} // namespace kestrel
