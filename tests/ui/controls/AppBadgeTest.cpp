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
    const QPalette light{QColor(Qt::black), QColor(Qt::white)};
    const QPalette dark{QColor(Qt::white), QColor(Qt::black)};
    const QImage inTheLight = glow(light);
    EXPECT_NE(glow(dark), inTheLight);
    EXPECT_EQ(glow(light), inTheLight);
}

} // namespace
} // namespace kestrel
