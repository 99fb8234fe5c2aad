#include "AppBadge.h"

#include "ContinuousRectangle.h"
#include "Corners.h"
#include "ThemeColor.h"

#include <QImage>
#include <QLinearGradient>
#include <QPainter>
#include <QPalette>

#include <gtest/gtest.h>

namespace kestrel {
namespace {

QImage glow(const QPalette& palette) {
    QImage canvas(80, 80, QImage::Format_ARGB32_Premultiplied);
    canvas.fill(Qt::transparent);
    QPainter painter(&canvas);
    AppBadge::drawGlow(painter, QRect(18, 18, 44, 44), palette);
    return canvas;
}

TEST(AppBadgeTest, glowsInThePurpleOfEachPalette) {
    const QPalette light{QColor(Qt::black), QColor(0xEE, 0xEE, 0xEE)};
    const QPalette dark{QColor(Qt::white), QColor(0x20, 0x20, 0x22)};
    const QImage inTheLight = glow(light);
    EXPECT_NE(glow(dark), inTheLight);
    EXPECT_EQ(glow(light), inTheLight);
}

TEST(AppBadgeTest, glowsLikeABlurOfTwelvePixels) {
    const QImage picture = glow(QPalette(QColor(Qt::white)));
    const auto opacity = [&picture](int distance) {
        // Beyond each edge of the badge, from its middle.
        const double left = picture.pixelColor(18 - distance, 40).alphaF();
        EXPECT_NEAR(picture.pixelColor(61 + distance, 40).alphaF(), left, 0.01) << distance;
        EXPECT_NEAR(picture.pixelColor(40, 18 - distance).alphaF(), left, 0.01) << distance;
        EXPECT_NEAR(picture.pixelColor(40, 61 + distance).alphaF(), left, 0.01) << distance;
        return left;
    };
    EXPECT_NEAR(picture.pixelColor(40, 40).alphaF(), 0.35, 0.01);
    // A normal distribution with a standard deviation of six pixels.
    EXPECT_NEAR(opacity(0), 0.35 * 0.53, 0.01);
    EXPECT_NEAR(opacity(3), 0.35 * 0.34, 0.01);
    EXPECT_NEAR(opacity(6), 0.35 * 0.18, 0.01);
    EXPECT_NEAR(opacity(11), 0.35 * 0.04, 0.01);
    EXPECT_EQ(picture.pixelColor(5, 40).alpha(), 0);
}

TEST(AppBadgeTest, glowsTwelvePixelsFarOnEverySide) {
    for (const double ratio : {1.0, 1.5, 2.0}) {
        QImage canvas(QSize(80, 80) * ratio, QImage::Format_ARGB32_Premultiplied);
        canvas.setDevicePixelRatio(ratio);
        canvas.fill(Qt::transparent);
        QPainter painter(&canvas);
        AppBadge::drawGlow(painter, QRect(18, 18, 44, 44), QPalette(QColor(Qt::white)));
        painter.end();
        canvas.setDevicePixelRatio(1);
        QRect glow;
        for (int y = 0; y < canvas.height(); ++y) {
            for (int x = 0; x < canvas.width(); ++x) {
                glow |= canvas.pixelColor(x, y).alpha() > 0 ? QRect(x, y, 1, 1) : QRect();
            }
        }
        EXPECT_EQ(glow, QRect(QPoint(6, 6) * ratio, QSize(68, 68) * ratio)) << ratio;
    }
}

TEST(AppBadgeTest, isASquareWithRoundCorners) {
    QWidget window;
    window.setPalette(QPalette(QColor(Qt::white)));
    AppBadge badge(&window);
    ASSERT_EQ(badge.size(), QSize(44, 44));
    const QImage shown = window.grab(badge.rect()).toImage();
    const auto colorOf = [&window](ThemeColor::Name name) {
        return ThemeColor(name).color(window.palette());
    };
    const QImage expected = paintedOn(Qt::white, badge.size(), [&](QPainter& painter) {
        QLinearGradient gradient(0, 0, 44, 44);
        gradient.setColorAt(0, colorOf(ThemeColor::Name::purpleFill));
        gradient.setColorAt(1, colorOf(ThemeColor::Name::blue));
        painter.setPen(Qt::NoPen);
        painter.setBrush(gradient);
        painter.drawPath(continuousRectangle(badge.rect(), 12));
    });
    EXPECT_TRUE(haveEqualCorners(shown, expected, 10));
}

} // namespace
} // namespace kestrel
