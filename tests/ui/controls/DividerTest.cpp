#include "Divider.h"

#include "ThemeColor.h"

#include <QImage>
#include <QPalette>

#include <gtest/gtest.h>

namespace kestrel {
namespace {

/// The colour of the divider in a window with this palette.
QColor drawn(Divider& divider, const QPalette& palette) {
    QWidget window;
    window.setPalette(palette);
    divider.setParent(&window);
    divider.resize(20, 20);
    const QImage image = window.grab(divider.geometry()).toImage();
    const QColor color = image.pixelColor(image.rect().bottomRight());
    EXPECT_EQ(image.pixelColor(0, 0), color);
    divider.setParent(nullptr);
    return color;
}

TEST(DividerTest, isALineOfOnePixel) {
    Divider horizontal(Qt::Horizontal, nullptr);
    horizontal.resize(20, 20);
    EXPECT_EQ(horizontal.size(), QSize(20, 1));
    Divider vertical(Qt::Vertical, nullptr);
    vertical.resize(20, 20);
    EXPECT_EQ(vertical.size(), QSize(1, 20));
}

TEST(DividerTest, isDrawnInTheSeparatorColorAtItsOpacity) {
    Divider divider(Qt::Horizontal, nullptr);
    const QPalette light(QColor(Qt::black), QColor(0xEE, 0xEE, 0xEE));
    EXPECT_NEAR(drawn(divider, light).red(), 0xEE * 0.8, 1);
    divider.setOpacity(0.5);
    EXPECT_NEAR(drawn(divider, light).red(), 0xEE * 0.9, 1);
}

TEST(DividerTest, isStrongerInAHighContrastPalette) {
    Divider divider(Qt::Horizontal, nullptr);
    EXPECT_NEAR(drawn(divider, QPalette(QColor(Qt::white))).red(), 255 * 0.4, 1);
}

} // namespace
} // namespace kestrel
