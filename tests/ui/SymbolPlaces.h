#pragma once

#include "Symbol.h"

#include <QColor>
#include <QImage>
#include <QRect>

#include <algorithm>
#include <cstdlib>

namespace kestrel {

/// Returns where the image shows the symbol in this colour and size, or an empty rectangle: the
/// colour is where the symbol covers its background, and is not where it leaves it free.
inline QRect placeOf(Symbol symbol, int size, const QColor& color, const QImage& image) {
    const QImage mask = symbolPixmap(symbol, size, Qt::black, 1).toImage();
    const auto isColor = [&](int x, int y) {
        const QColor pixel = image.pixelColor(x, y);
        return std::max({std::abs(pixel.red() - color.red()),
                         std::abs(pixel.green() - color.green()),
                         std::abs(pixel.blue() - color.blue())}) <= 3;
    };
    const auto isAt = [&](int left, int top) {
        for (int y = 0; y < size; ++y) {
            for (int x = 0; x < size; ++x) {
                const int alpha = mask.pixelColor(x, y).alpha();
                if ((alpha == 255 && !isColor(left + x, top + y)) ||
                    (alpha < 128 && isColor(left + x, top + y))) {
                    return false;
                }
            }
        }
        return true;
    };
    for (int top = 0; top + size <= image.height(); ++top) {
        for (int left = 0; left + size <= image.width(); ++left) {
            if (isAt(left, top)) {
                return {left, top, size, size};
            }
        }
    }
    return {};
}

} // namespace kestrel
