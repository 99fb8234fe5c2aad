#include "ThemeColor.h"

#include "ColorScheme.h"
#include "Contrast.h"
#include "DesktopPalettes.h"

#include <QPalette>

#include <gtest/gtest.h>

#include <utility>

namespace kestrel {
namespace {

const QPalette light(QColor(Qt::black), QColor(0xEE, 0xEE, 0xEE));
const QPalette dark(QColor(Qt::white), QColor(0x20, 0x20, 0x20));

TEST(ThemeColorTest, distinguishesLightAndDarkPalettes) {
    EXPECT_EQ(colorScheme(light), ColorScheme::light);
    EXPECT_EQ(colorScheme(dark), ColorScheme::dark);
    EXPECT_EQ(colorScheme(QPalette(QColor(Qt::yellow), QColor(Qt::black))), ColorScheme::dark);
}

TEST(ThemeColorTest, measuresTheContrastOfTwoColours) {
    EXPECT_NEAR(contrastRatio(Qt::black, Qt::white), 21, 0.001);
    EXPECT_NEAR(contrastRatio(Qt::white, Qt::black), 21, 0.001);
    EXPECT_NEAR(contrastRatio(Qt::blue, Qt::blue), 1, 0.001);
    for (const auto& [a, b] : {std::pair(QColor(0x77, 0x77, 0x77), QColor(Qt::white)),
                               std::pair(QColor(0x95, 0x40, 0xC8), QColor(0x02, 0x03, 0x04)),
                               std::pair(QColor(Qt::red), QColor(Qt::green))}) {
        EXPECT_NEAR(contrastRatio(a, b), contrast(a, b), 0.001);
    }
}

TEST(ThemeColorTest, tellsHighContrastPalettesFromOthers) {
    for (const DesktopPalette& desktop : desktopPalettes()) {
        EXPECT_EQ(isHighContrast(desktop.palette), desktop.textContrast == 7) << desktop.name;
    }
    EXPECT_FALSE(isHighContrast(light));
    EXPECT_FALSE(isHighContrast(dark));
}

TEST(ThemeColorTest, hasAColourForEachName) {
    struct Row {
        ThemeColor::Name name;
        QRgb light;
        QRgb dark;
        QRgb highContrastLight;
        QRgb highContrastDark;
    };

    const QPalette highContrastLight{QColor(Qt::black), QColor(Qt::white)};
    const QPalette highContrastDark{QColor(Qt::white), QColor(Qt::black)};
    using Name = ThemeColor::Name;
    for (const Row& row : {
             Row{Name::purple, 0xFF9540C8, 0xFFD084FA, 0xFF74209F, 0xFFD084FA},
             Row{Name::purpleFill, 0xFF9540C8, 0xFF9843CE, 0xFF74209F, 0xFF74209F},
             Row{Name::blue, 0xFF007AFF, 0xFF0A84FF, 0xFF007AFF, 0xFF0A84FF},
             Row{Name::green, 0xFF1B7A2E, 0xFF32D74B, 0xFF0F5A1E, 0xFF32D74B},
             Row{Name::orange, 0xFF9C5400, 0xFFFF9F0A, 0xFF7A4000, 0xFFFF9F0A},
             Row{Name::red, 0xFFC0241C, 0xFFFF988E, 0xFF94140E, 0xFFFF988E},
             Row{Name::redFill, 0xFFD92D24, 0xFFD92D24, 0xFFD92D24, 0xFFD92D24},
             Row{Name::white, 0xFFFFFFFF, 0xFFFFFFFF, 0xFFFFFFFF, 0xFFFFFFFF},
             Row{Name::primary, 0xFF000000, 0xFFFFFFFF, 0xFF000000, 0xFFFFFFFF},
             Row{Name::secondary, 0xBD000000, 0xBDFFFFFF, 0xBD000000, 0xBDFFFFFF},
             Row{Name::secondarySymbol, 0xD1000000, 0xD1FFFFFF, 0xD1000000, 0xD1FFFFFF},
         }) {
        EXPECT_EQ(ThemeColor(row.name).color(light).rgba(), row.light);
        EXPECT_EQ(ThemeColor(row.name).color(dark).rgba(), row.dark);
        EXPECT_EQ(ThemeColor(row.name).color(highContrastLight).rgba(), row.highContrastLight);
        EXPECT_EQ(ThemeColor(row.name).color(highContrastDark).rgba(), row.highContrastDark);
    }
}

TEST(ThemeColorTest, multipliesItsOpacity) {
    EXPECT_NEAR(ThemeColor(ThemeColor::Name::purple).withOpacity(0.1).color(light).alphaF(), 0.1,
                0.005);
    EXPECT_NEAR(ThemeColor(ThemeColor::Name::secondary).withOpacity(0.2).color(light).alphaF(),
                0.148, 0.005);
    EXPECT_NEAR(ThemeColor(ThemeColor::Name::secondarySymbol)
                    .withOpacity(0.5)
                    .withOpacity(0.4)
                    .color(dark)
                    .alphaF(),
                0.164, 0.005);
}

TEST(ThemeColorTest, highlightsInPurpleWithTextInTheWindowsColourOrWhite) {
    QPalette onLight = light;
    setHighlight(onLight);
    EXPECT_EQ(onLight.color(QPalette::Highlight), QColor(0x95, 0x40, 0xC8));
    EXPECT_EQ(onLight.color(QPalette::HighlightedText), QColor(Qt::white));
    QPalette onDark = dark;
    setHighlight(onDark);
    EXPECT_EQ(onDark.color(QPalette::Highlight), QColor(0xD0, 0x84, 0xFA));
    EXPECT_EQ(onDark.color(QPalette::HighlightedText), QColor(0x20, 0x20, 0x20));
}

TEST(ThemeColorTest, separatesMoreStronglyInHighContrastPalettes) {
    EXPECT_NEAR(separatorColor(light).alphaF(), 0.2, 0.005);
    EXPECT_NEAR(separatorColor(dark).alphaF(), 0.2, 0.005);
    EXPECT_NEAR(separatorColor(QPalette(QColor(Qt::white))).alphaF(), 0.6, 0.005);
    EXPECT_NEAR(separatorColor(QPalette(QColor(Qt::black))).alphaF(), 0.6, 0.005);
}

TEST(ThemeColorTest, ignoresTheCurrentColorGroup) {
    QPalette palette = light;
    palette.setColor(QPalette::Disabled, QPalette::WindowText, Qt::gray);
    palette.setCurrentColorGroup(QPalette::Disabled);
    EXPECT_EQ(ThemeColor(ThemeColor::Name::primary).color(palette), QColor(Qt::black));
}

} // namespace
} // namespace kestrel
