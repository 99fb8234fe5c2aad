#include "Badge.h"

#include <QPainter>

namespace kestrel {

Badge::Badge(int side, Painting paint, QWidget* parent) : QWidget(parent), paint_(paint) {
    setFixedSize(side, side);
}

void Badge::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    paint_(painter, rect(), palette());
}

} // namespace kestrel
