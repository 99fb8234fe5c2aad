#include "DropBadge.h"

#include "Symbol.h"
#include "TextFont.h"
#include "ThemeColor.h"

#include <QPainter>

namespace kestrel {
namespace {

constexpr int discSize = 112;
constexpr int ringSize = 88;
constexpr int symbolFontSize = 35;

} // namespace

DropBadge::DropBadge(QWidget* parent) : QWidget(parent) {
    setFixedSize(discSize, discSize);
}

void DropBadge::paintEvent(QPaintEvent*) {
    const ThemeColor purple = ThemeColor::Name::purple;
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(purple.withOpacity(0.1).color(palette()));
    painter.drawEllipse(QRectF(rect()));

    QRectF ring(0, 0, ringSize, ringSize);
    ring.moveCenter(QRectF(rect()).center());
    painter.setPen(QPen(purple.withOpacity(0.25).color(palette()), 1));
    painter.setBrush(Qt::NoBrush);
    painter.drawEllipse(ring.adjusted(0.5, 0.5, -0.5, -0.5));

    drawSymbol(painter, rect(), Symbol::arrowDownDocFill, symbolSize(systemFont(symbolFontSize)),
               purple.color(palette()));
}

} // namespace kestrel
