#include "FocusRing.h"

#include "ContinuousRectangle.h"

#include <QColor>
#include <QPainter>
#include <QPen>
#include <QRectF>

namespace kestrel {

void drawFocusRing(QPainter& painter, const QRectF& rect, double radius, const QColor& color) {
    constexpr double width = 2;
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(color, width));
    painter.setBrush(Qt::NoBrush);
    const double inset = width / 2;
    painter.drawPath(
        continuousRectangle(rect.adjusted(inset, inset, -inset, -inset), radius - inset));
    painter.restore();
}

} // namespace kestrel
