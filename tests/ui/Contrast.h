#pragma once

#include <QColor>

#include <algorithm>
#include <cmath>

namespace kestrel {

/// The contrast ratio of two opaque colours by the definition of WCAG 2.2; independent of the
/// program's own.
inline double contrast(const QColor& a, const QColor& b) {
    const auto luminance = [](const QColor& color) {
        const auto linear = [](int channel) {
            const double value = channel / 255.0;
            return value <= 0.04045 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
        };
        return 0.2126 * linear(color.red()) + 0.7152 * linear(color.green()) +
               0.0722 * linear(color.blue());
    };
    const double first = luminance(a) + 0.05;
    const double second = luminance(b) + 0.05;
    return std::max(first, second) / std::min(first, second);
}

} // namespace kestrel
