#include "AppBadge.h"

#include "ContinuousRectangle.h"
#include "Ink.h"
#include "Symbol.h"
#include "TextFont.h"

#include <QImage>
#include <QLinearGradient>
#include <QPainter>
#include <QPixmapCache>

#include <algorithm>
#include <cmath>
#include <numbers>

namespace kestrel {
namespace {

constexpr int side = 44;
constexpr double cornerRadius = 12;
constexpr int glowRadius = 12;
constexpr double glowOpacity = 0.35;

/// How much of a blurred interval from 0 to `length` is left at a place.
double blurred(double place, double length) {
    const double spread = glowRadius / 2.0 * std::numbers::sqrt2;
    return (std::erf(place / spread) - std::erf((place - length) / spread)) / 2;
}

/// A square blurred as a whole: the blur leaves nothing of the corners' shape.
QPixmap makeGlow(const QColor& color, double devicePixelRatio) {
    const auto pixels = static_cast<int>(std::ceil((side + 2 * glowRadius) * devicePixelRatio));
    const auto placeOf = [devicePixelRatio](int pixel) {
        return (pixel + 0.5) / devicePixelRatio - glowRadius;
    };
    QImage image(pixels, pixels, QImage::Format_ARGB32_Premultiplied);
    for (int y = 0; y < pixels; ++y) {
        for (int x = 0; x < pixels; ++x) {
            QColor pixel = color;
            pixel.setAlphaF(static_cast<float>(glowOpacity * blurred(placeOf(x), side) *
                                               blurred(placeOf(y), side)));
            image.setPixelColor(x, y, pixel);
        }
    }
    QPixmap glow = QPixmap::fromImage(std::move(image));
    glow.setDevicePixelRatio(devicePixelRatio);
    return glow;
}

void drawBadge(QPainter& painter, const QPalette& palette) {
    const QRect badge(0, 0, side, side);
    painter.setRenderHint(QPainter::Antialiasing);
    QLinearGradient gradient(0, 0, side, side);
    gradient.setColorAt(0, Ink(Ink::Name::purple).color(palette));
    gradient.setColorAt(1, Ink(Ink::Name::blue).color(palette));
    painter.setPen(Qt::NoPen);
    painter.setBrush(gradient);
    painter.drawPath(continuousRectangle(badge, cornerRadius));
    const int symbolSide = std::min(symbolSize(TextFont{TextStyle::title2}.font()), side - 12);
    drawSymbol(painter, badge, Symbol::waveformBadgePlus, symbolSide, Qt::white);
}

} // namespace

AppBadge::AppBadge(QWidget* parent) : QWidget(parent) {
    setFixedSize(side, side);
}

void AppBadge::drawGlow(QPainter& painter, const QRect& badge, const QPalette& palette) {
    const double ratio = painter.device()->devicePixelRatioF();
    const QString key = QStringLiteral("kestrel/glow/%1").arg(ratio);
    QPixmap glow;
    if (!QPixmapCache::find(key, &glow)) {
        glow = makeGlow(Ink(Ink::Name::purple).color(palette), ratio);
        QPixmapCache::insert(key, glow);
    }
    painter.drawPixmap(badge.topLeft() - QPoint(glowRadius, glowRadius), glow);
}

QPixmap AppBadge::pixmap(const QPalette& palette, double devicePixelRatio) {
    QPixmap pixmap(QSize(side, side) * devicePixelRatio);
    pixmap.setDevicePixelRatio(devicePixelRatio);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    drawBadge(painter, palette);
    return pixmap;
}

void AppBadge::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    drawBadge(painter, palette());
}

} // namespace kestrel
