#include "Ink.h"

#include <QPalette>

#include <gtest/gtest.h>

namespace kestrel {
namespace {

const QPalette light(QColor(Qt::black), QColor(0xEE, 0xEE, 0xEE));
const QPalette dark(QColor(Qt::white), QColor(0x20, 0x20, 0x20));

TEST(InkTest, knowsALightPaletteFromADarkOne) {
    EXPECT_EQ(colorScheme(light), ColorScheme::light);
    EXPECT_EQ(colorScheme(dark), ColorScheme::dark);
    EXPECT_EQ(colorScheme(QPalette(QColor(Qt::yellow), QColor(Qt::black))), ColorScheme::dark);
}

TEST(InkTest, hasAColourForEachName) {
    struct Row {
        Ink::Name name;
        QRgb light;
        QRgb dark;
    };

    for (const Row& row : {
             Row{Ink::Name::purple, 0xFFAF52DE, 0xFFBF5AF2},
             Row{Ink::Name::blue, 0xFF007AFF, 0xFF0A84FF},
             Row{Ink::Name::green, 0xFF28CD41, 0xFF32D74B},
             Row{Ink::Name::orange, 0xFFFF9500, 0xFFFF9F0A},
             Row{Ink::Name::red, 0xFFFF3B30, 0xFFFF453A},
             Row{Ink::Name::white, 0xFFFFFFFF, 0xFFFFFFFF},
             Row{Ink::Name::primary, 0xFF000000, 0xFFFFFFFF},
             Row{Ink::Name::secondary, 0x8C000000, 0x99FFFFFF},
         }) {
        EXPECT_EQ(Ink(row.name).color(light).rgba(), row.light);
        EXPECT_EQ(Ink(row.name).color(dark).rgba(), row.dark);
    }
}

TEST(InkTest, takesAFractionOfItsOwnOpacity) {
    EXPECT_NEAR(Ink(Ink::Name::purple).withOpacity(0.1).color(light).alphaF(), 0.1, 0.005);
    EXPECT_NEAR(Ink(Ink::Name::secondary).withOpacity(0.2).color(light).alphaF(), 0.11, 0.005);
    EXPECT_NEAR(Ink(Ink::Name::secondary).withOpacity(0.5).withOpacity(0.4).color(dark).alphaF(),
                0.12, 0.005);
}

TEST(InkTest, isTheSameInAWindowThatIsNotActiveOrDisabled) {
    QPalette palette = light;
    palette.setColor(QPalette::Disabled, QPalette::WindowText, Qt::gray);
    palette.setCurrentColorGroup(QPalette::Disabled);
    EXPECT_EQ(Ink(Ink::Name::primary).color(palette), QColor(Qt::black));
}

} // namespace
} // namespace kestrel
