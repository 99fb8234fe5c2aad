#include "JobBadge.h"

#include "SymbolBadge.h"
#include "TextFont.h"
#include "ThemeColor.h"

#include <QPainter>

namespace kestrel {
namespace {

constexpr int jobBadgeSide = 42;
constexpr double jobBadgeRadius = 9;
constexpr double fillOpacity = 0.11;

} // namespace

JobBadge::JobBadge(QWidget* parent) : QWidget(parent) {
    setFixedSize(jobBadgeSide, jobBadgeSide);
}

void JobBadge::paintEvent(QPaintEvent*) {
    const ThemeColor purple = ThemeColor::Name::purple;
    QPainter painter(this);
    drawSymbolBadge(painter, rect(), jobBadgeRadius,
                    purple.withOpacity(fillOpacity).color(palette()), Symbol::waveform,
                    TextFont{}.font(), purple.color(palette()));
}

} // namespace kestrel
