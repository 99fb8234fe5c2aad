#include "JobBadge.h"

#include "ContinuousRectangle.h"
#include "Symbol.h"
#include "TextFont.h"
#include "ThemeColor.h"

#include <QPainter>

#include <algorithm>

namespace kestrel {
namespace {

constexpr int jobBadgeSide = 42;
constexpr double jobBadgeRadius = 9;
constexpr int symbolMargin = 6;

} // namespace

JobBadge::JobBadge(QWidget* parent) : QWidget(parent) {
    setFixedSize(jobBadgeSide, jobBadgeSide);
}

void JobBadge::paintEvent(QPaintEvent*) {
    const ThemeColor purple = ThemeColor::Name::purple;
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(purple.withOpacity(0.11).color(palette()));
    painter.drawPath(continuousRectangle(rect(), jobBadgeRadius));
    const int symbolSide = std::min(symbolSize(TextFont{}.font()), jobBadgeSide - 2 * symbolMargin);
    drawSymbol(painter, rect(), Symbol::waveform, symbolSide, purple.color(palette()));
}

} // namespace kestrel
