#include "ThemeColor.h"

#include "ColorScheme.h"

#include <QPalette>

namespace kestrel {
namespace {

constexpr double separatorOpacity = 0.2;
constexpr double highContrastSeparatorOpacity = 0.6;
constexpr double secondaryOpacity = 0.74;
constexpr double secondarySymbolOpacity = 0.82;

/// The RGB values of a colour name.
struct Values {
    QRgb light;
    QRgb dark;
    QRgb highContrastLight;
    QRgb highContrastDark;
};

Values valuesOf(ThemeColor::Name name) {
    switch (name) {
    case ThemeColor::Name::purple:
        return {0x9540C8, 0xD084FA, 0x74209F, 0xD084FA};
    case ThemeColor::Name::purpleFill:
        return {0x9540C8, 0x9843CE, 0x74209F, 0x74209F};
    case ThemeColor::Name::blue:
        return {0x007AFF, 0x0A84FF, 0x007AFF, 0x0A84FF};
    case ThemeColor::Name::green:
        return {0x1B7A2E, 0x32D74B, 0x0F5A1E, 0x32D74B};
    case ThemeColor::Name::orange:
        return {0x9C5400, 0xFF9F0A, 0x7A4000, 0xFF9F0A};
    case ThemeColor::Name::red:
        return {0xC0241C, 0xFF988E, 0x94140E, 0xFF988E};
    case ThemeColor::Name::redFill:
        return {0xD92D24, 0xD92D24, 0xD92D24, 0xD92D24};
    default:
        return {0xFFFFFF, 0xFFFFFF, 0xFFFFFF, 0xFFFFFF};
    }
}

/// Returns the RGB value of a colour name for the palette's colour scheme and contrast.
QColor rgbOf(ThemeColor::Name name, const QPalette& palette) {
    const Values values = valuesOf(name);
    const bool isDark = colorScheme(palette) == ColorScheme::dark;
    if (isHighContrast(palette)) {
        return QColor::fromRgb(isDark ? values.highContrastDark : values.highContrastLight);
    }
    return QColor::fromRgb(isDark ? values.dark : values.light);
}

QColor textColor(const QPalette& palette) {
    return palette.color(QPalette::Active, QPalette::WindowText);
}

QColor scaled(QColor color, double opacity) {
    color.setAlphaF(static_cast<float>(color.alphaF() * opacity));
    return color;
}

} // namespace

ThemeColor ThemeColor::withOpacity(double opacity) const {
    ThemeColor color = *this;
    color.opacity_ *= opacity;
    return color;
}

QColor ThemeColor::color(const QPalette& palette) const {
    switch (name_) {
    case Name::primary:
        return scaled(textColor(palette), opacity_);
    case Name::secondary:
        return scaled(textColor(palette), secondaryOpacity * opacity_);
    case Name::secondarySymbol:
        return scaled(textColor(palette), secondarySymbolOpacity * opacity_);
    default:
        return scaled(rgbOf(name_, palette), opacity_);
    }
}

void setHighlight(QPalette& palette) {
    const bool isDark = colorScheme(palette) == ColorScheme::dark;
    const QColor window = palette.color(QPalette::Active, QPalette::Window);
    palette.setColor(QPalette::Highlight, ThemeColor(ThemeColor::Name::purple).color(palette));
    palette.setColor(QPalette::HighlightedText, isDark ? window : QColor(Qt::white));
}

QColor separatorColor(const QPalette& palette) {
    const double opacity =
        isHighContrast(palette) ? highContrastSeparatorOpacity : separatorOpacity;
    return ThemeColor(ThemeColor::Name::primary).withOpacity(opacity).color(palette);
}

} // namespace kestrel
