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
    // Thin strokes cover no pixel of a small symbol whole.
    int densest = 0;
    for (int y = 0; y < size; ++y) {
        for (int x = 0; x < size; ++x) {
            densest = std::max(densest, mask.pixelColor(x, y).alpha());
        }
    }
    const auto isAt = [&](int left, int top) {
        // The corners of all symbols are transparent.
        const QColor background = image.pixelColor(left, top);
        const auto isNear = [&](int pixel, int below, int above) {
            return std::abs(pixel - (below + (above - below) * densest / 255)) <= 3;
        };
        const auto isColor = [&](int x, int y) {
            const QColor pixel = image.pixelColor(x, y);
            return isNear(pixel.red(), background.red(), color.red()) &&
                   isNear(pixel.green(), background.green(), color.green()) &&
                   isNear(pixel.blue(), background.blue(), color.blue());
        };
        for (int y = 0; y < size; ++y) {
            for (int x = 0; x < size; ++x) {
                const int alpha = mask.pixelColor(x, y).alpha();
                if ((alpha == densest && !isColor(left + x, top + y)) ||
                    (alpha < densest / 2 && isColor(left + x, top + y))) {
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
