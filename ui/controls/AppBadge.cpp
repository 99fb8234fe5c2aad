#include "AppBadge.h"

#include "SymbolBadge.h"
#include "TextFont.h"
#include "ThemeColor.h"

#include <QImage>
#include <QLinearGradient>
#include <QPainter>
#include <QPixmapCache>

#include <cmath>
#include <cstddef>
#include <numbers>
#include <utility>
#include <vector>

namespace kestrel {
namespace {

constexpr int appBadgeSide = 44;
constexpr double appBadgeRadius = 12;
constexpr int glowRadius = 12;
constexpr double glowOpacity = 0.35;

/// The value at `place` of a box from 0 to `length` after a Gaussian blur.
double blurred(double place, double length) {
    const double spread = glowRadius / 2.0 * std::numbers::sqrt2;
    return (std::erf(place / spread) - std::erf((place - length) / spread)) / 2;
}

/// A blurred square: the blur radius is too large for the rounded corners to show.
QPixmap makeGlow(const QColor& color, double devicePixelRatio) {
    const auto pixels =
        static_cast<int>(std::ceil((appBadgeSide + 2 * glowRadius) * devicePixelRatio));
    // The blur is separable: one row of weights serves both axes.
    std::vector<double> strengths;
    strengths.reserve(static_cast<std::size_t>(pixels));
    for (int pixel = 0; pixel < pixels; ++pixel) {
        strengths.push_back(blurred((pixel + 0.5) / devicePixelRatio - glowRadius, appBadgeSide));
    }
    const auto side = static_cast<int>(strengths.size());
    QImage image(side, side, QImage::Format_ARGB32_Premultiplied);
    int y = 0;
    for (const double down : strengths) {
        auto* line = reinterpret_cast<QRgb*>(image.scanLine(y)); // NOLINT: the format's pixels
        for (const double across : strengths) {
            QColor pixel = color;
            pixel.setAlphaF(static_cast<float>(glowOpacity * across * down));
            *line++ = qPremultiply(pixel.rgba());
        }
        ++y;
    }
    QPixmap glow = QPixmap::fromImage(std::move(image));
    glow.setDevicePixelRatio(devicePixelRatio);
    return glow;
}

void drawBadge(QPainter& painter, const QRect& rect, const QPalette& palette) {
    QLinearGradient gradient(rect.topLeft(), rect.topLeft() + QPoint(rect.width(), rect.height()));
    gradient.setColorAt(0, ThemeColor(ThemeColor::Name::purpleFill).color(palette));
    gradient.setColorAt(1, ThemeColor(ThemeColor::Name::blue).color(palette));
    drawSymbolBadge(painter, rect, appBadgeRadius, gradient, Symbol::waveformBadgePlus,
                    TextFont{TextStyle::title2}.font(), Qt::white);
}

} // namespace

AppBadge::AppBadge(QWidget* parent) : Badge(appBadgeSide, drawBadge, parent) {}

void AppBadge::drawGlow(QPainter& painter, const QRect& badge, const QPalette& palette) {
    const double ratio = painter.device()->devicePixelRatioF();
    const QColor color = ThemeColor(ThemeColor::Name::purple).color(palette);
    const QString key = QStringLiteral("kestrel/glow/%1/%2")
                            .arg(QString::number(ratio), QString::number(color.rgba(), 16));
    QPixmap glow;
    if (!QPixmapCache::find(key, &glow)) {
        glow = makeGlow(color, ratio);
        QPixmapCache::insert(key, glow);
    }
    painter.drawPixmap(badge.topLeft() - QPoint(glowRadius, glowRadius), glow);
}

} // namespace kestrel
