#include "ThemeColor.h"

#include "ColorScheme.h"

#include <QPalette>

#include <gtest/gtest.h>

namespace kestrel {
namespace {

const QPalette light(QColor(Qt::black), QColor(0xEE, 0xEE, 0xEE));
const QPalette dark(QColor(Qt::white), QColor(0x20, 0x20, 0x20));

TEST(ThemeColorTest, distinguishesLightAndDarkPalettes) {
    EXPECT_EQ(colorScheme(light), ColorScheme::light);
    EXPECT_EQ(colorScheme(dark), ColorScheme::dark);
    EXPECT_EQ(colorScheme(QPalette(QColor(Qt::yellow), QColor(Qt::black))), ColorScheme::dark);
}

TEST(ThemeColorTest, hasAColourForEachName) {
    struct Row {
        ThemeColor::Name name;
        QRgb light;
        QRgb dark;
    };

    for (const Row& row : {
             Row{ThemeColor::Name::purple, 0xFFAF52DE, 0xFFBF5AF2},
             Row{ThemeColor::Name::blue, 0xFF007AFF, 0xFF0A84FF},
             Row{ThemeColor::Name::green, 0xFF28CD41, 0xFF32D74B},
             Row{ThemeColor::Name::orange, 0xFFFF9500, 0xFFFF9F0A},
             Row{ThemeColor::Name::red, 0xFFFF3B30, 0xFFFF453A},
             Row{ThemeColor::Name::white, 0xFFFFFFFF, 0xFFFFFFFF},
             Row{ThemeColor::Name::primary, 0xFF000000, 0xFFFFFFFF},
             Row{ThemeColor::Name::secondary, 0x8C000000, 0x99FFFFFF},
         }) {
        EXPECT_EQ(ThemeColor(row.name).color(light).rgba(), row.light);
        EXPECT_EQ(ThemeColor(row.name).color(dark).rgba(), row.dark);
    }
}

TEST(ThemeColorTest, multipliesItsOpacity) {
    EXPECT_NEAR(ThemeColor(ThemeColor::Name::purple).withOpacity(0.1).color(light).alphaF(), 0.1,
                0.005);
    EXPECT_NEAR(ThemeColor(ThemeColor::Name::secondary).withOpacity(0.2).color(light).alphaF(),
                0.11, 0.005);
    EXPECT_NEAR(ThemeColor(ThemeColor::Name::secondary)
                    .withOpacity(0.5)
                    .withOpacity(0.4)
                    .color(dark)
                    .alphaF(),
                0.12, 0.005);
}

TEST(ThemeColorTest, ignoresTheCurrentColorGroup) {
    QPalette palette = light;
    palette.setColor(QPalette::Disabled, QPalette::WindowText, Qt::gray);
    palette.setCurrentColorGroup(QPalette::Disabled);
    EXPECT_EQ(ThemeColor(ThemeColor::Name::primary).color(palette), QColor(Qt::black));
}

} // namespace
} // namespace kestrel
