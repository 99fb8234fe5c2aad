#include "ColorScheme.h"

#include <QColor>
#include <QPalette>

#include <algorithm>
#include <cmath>

namespace kestrel {
namespace {

constexpr double highContrast = 19.5;

/// The linear value of an sRGB channel, both from 0 to 1.
double linear(double channel) {
    return channel <= 0.04045 ? channel / 12.92 : std::pow((channel + 0.055) / 1.055, 2.4);
}

double relativeLuminance(const QColor& color) {
    return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) +
           0.0722 * linear(color.blueF());
}

} // namespace

ColorScheme colorScheme(const QPalette& palette) {
    const QColor window = palette.color(QPalette::Active, QPalette::Window);
    const QColor text = palette.color(QPalette::Active, QPalette::WindowText);
    return window.lightnessF() < text.lightnessF() ? ColorScheme::dark : ColorScheme::light;
}

double contrastRatio(const QColor& a, const QColor& b) {
    constexpr double flare = 0.05;
    const auto [darker, lighter] = std::minmax({relativeLuminance(a), relativeLuminance(b)});
    return (lighter + flare) / (darker + flare);
}

bool isHighContrast(const QPalette& palette) {
    return contrastRatio(palette.color(QPalette::Active, QPalette::Window),
                         palette.color(QPalette::Active, QPalette::WindowText)) >= highContrast;
}

} // namespace kestrel
