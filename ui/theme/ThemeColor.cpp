#include "ThemeColor.h"

#include "ColorScheme.h"

#include <QPalette>

namespace kestrel {
namespace {

constexpr double separatorOpacity = 0.2;

/// Returns the RGB value of a colour name in the light or the dark scheme.
QColor rgbOf(ThemeColor::Name name, ColorScheme scheme) {
    const bool isDark = scheme == ColorScheme::dark;
    switch (name) {
    case ThemeColor::Name::purple:
        return QColor::fromRgb(isDark ? 0xBF5AF2 : 0xAF52DE);
    case ThemeColor::Name::blue:
        return QColor::fromRgb(isDark ? 0x0A84FF : 0x007AFF);
    case ThemeColor::Name::green:
        return QColor::fromRgb(isDark ? 0x32D74B : 0x28CD41);
    case ThemeColor::Name::orange:
        return QColor::fromRgb(isDark ? 0xFF9F0A : 0xFF9500);
    case ThemeColor::Name::red:
        return QColor::fromRgb(isDark ? 0xFF453A : 0xFF3B30);
    default:
        return Qt::white;
    }
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
    // Dark iff the palette's window text is lighter than its window.
    const ColorScheme scheme = colorScheme(palette);
    switch (name_) {
    case Name::primary:
        return scaled(palette.color(QPalette::Active, QPalette::WindowText), opacity_);
    case Name::secondary: {
        const double dimmed = scheme == ColorScheme::dark ? 0.6 : 0.55;
        return scaled(palette.color(QPalette::Active, QPalette::WindowText), dimmed * opacity_);
    }
    default:
        return scaled(rgbOf(name_, scheme), opacity_);
    }
}

QColor separatorColor(const QPalette& palette) {
    return ThemeColor(ThemeColor::Name::primary).withOpacity(separatorOpacity).color(palette);
}

} // namespace kestrel
