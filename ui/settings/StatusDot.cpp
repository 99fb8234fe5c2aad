#include "StatusDot.h"

#include <QPainter>

namespace kestrel {

StatusDot::StatusDot(QWidget* parent) : QWidget(parent) {
    setFixedSize(7, 7);
}

void StatusDot::setThemeColor(ThemeColor color) {
    if (color != themeColor_) {
        themeColor_ = color;
        update();
    }
}

void StatusDot::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(color());
    painter.drawEllipse(QRectF(rect()));
}

} // namespace kestrel
