#include "Divider.h"

#include "BandFill.h"
#include "ThemeColor.h"

#include <QPainter>

namespace kestrel {

Divider::Divider(Qt::Orientation orientation, QWidget* parent) : QWidget(parent) {
    if (orientation == Qt::Horizontal) {
        setFixedHeight(1);
    } else {
        setFixedWidth(1);
    }
}

void Divider::setOpacity(double opacity) {
    opacity_ = opacity;
    update();
}

void Divider::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setOpacity(opacity_);
    fillInBands(painter, rect(), separatorColor(palette()));
}

} // namespace kestrel
