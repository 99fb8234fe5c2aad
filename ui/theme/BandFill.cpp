#include "BandFill.h"

#include <QPainter>

#include <algorithm>

namespace kestrel {

void fillInBands(QPainter& painter, const QRect& rect, const QBrush& brush) {
    // Qt 6.4 to 6.11 multithread fills that are at least 96 device pixels high.
    const int height = std::max(1, static_cast<int>(64 / painter.device()->devicePixelRatioF()));
    for (int top = rect.top(); top <= rect.bottom(); top += height) {
        painter.fillRect(QRect(rect.left(), top, rect.width(), height) & rect, brush);
    }
}

} // namespace kestrel
