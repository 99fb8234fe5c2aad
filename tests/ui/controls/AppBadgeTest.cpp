#include "AppBadge.h"

#include <QImage>
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

} // namespace
} // namespace kestrel
