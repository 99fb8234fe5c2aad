#pragma once

#include <QPalette>

#include <string>
#include <vector>

namespace kestrel {

/// The palette of a desktop. The contrast of text is measured against `textContrast`.
struct DesktopPalette {
    std::string name;
    QPalette palette;
    double textContrast;
};

/// The default palettes of Fusion, Breeze and Adwaita, and those of high-contrast desktops.
inline std::vector<DesktopPalette> desktopPalettes() {
    constexpr double enhanced = 7;
    const auto make = [](const char* name, QRgb window, QRgb text, QRgb base, QRgb highlight,
                         QRgb highlightedText, double textContrast = 4.5) {
        const QColor background = QColor::fromRgb(window);
        const QColor foreground = QColor::fromRgb(text);
        QPalette palette(foreground, background, background.lighter(150), background.darker(150),
                         background.darker(130), foreground, Qt::white, QColor::fromRgb(base),
                         background);
        palette.setColor(QPalette::Highlight, QColor::fromRgb(highlight));
        palette.setColor(QPalette::HighlightedText, QColor::fromRgb(highlightedText));
        return DesktopPalette{name, palette, textContrast};
    };
    return {
        make("FusionLight", 0xEFEFEF, 0x000000, 0xFFFFFF, 0x308CC6, 0xFFFFFF),
        // Of Qt 6.5 and newer.
        make("FusionDark", 0x323232, 0xF0F0F0, 0x242424, 0x308CC6, 0xF0F0F0),
        make("GalleryDark", 0x242427, 0xFFFFFF, 0x1E1E20, 0x2F65CA, 0xFFFFFF),
        make("BreezeLight", 0xEFF0F1, 0x232629, 0xFFFFFF, 0x3DAEE9, 0xFFFFFF),
        make("BreezeDark", 0x202326, 0xFCFCFC, 0x141618, 0x3DAEE9, 0xFCFCFC),
        // Of Plasma 5.
        make("FormerBreezeDark", 0x2A2E32, 0xFCFCFC, 0x1B1E20, 0x3DAEE9, 0xFCFCFC),
        make("AdwaitaLight", 0xFAFAFA, 0x2E3436, 0xFFFFFF, 0x3584E4, 0xFFFFFF),
        make("AdwaitaDark", 0x242424, 0xFFFFFF, 0x1E1E1E, 0x3584E4, 0xFFFFFF),
        // Of GTK 3.
        make("FormerAdwaitaLight", 0xF6F5F4, 0x2E3436, 0xFFFFFF, 0x3584E4, 0xFFFFFF),
        make("FormerAdwaitaDark", 0x353535, 0xEEEEEC, 0x2D2D2D, 0x15539E, 0xFFFFFF),
        make("HighContrast", 0xFFFFFF, 0x000000, 0xFFFFFF, 0x1B6ACB, 0xFFFFFF, enhanced),
        make("HighContrastInverse", 0x000000, 0xFFFFFF, 0x000000, 0x15539E, 0xFFFFFF, enhanced),
        make("YellowOnBlack", 0x000000, 0xFFFF00, 0x000000, 0xFFFF00, 0x000000, enhanced),
    };
}

/// The name as gtest's parameter name.
template <typename Info> std::string paletteName(const Info& info) {
    return info.param.name;
}

} // namespace kestrel
