#pragma once

#include <QColor>
#include <QImage>

#include <cmath>
#include <cstddef>
#include <string>
#include <vector>

namespace kestrel {

/// The image as lines of text, one a row and a line break before the first: '#' where a colour
/// covers the background, '+' where it covers about half of a pixel, and '.' where it covers none.
/// Compares the channel in which the two colours differ most.
inline std::string pixelArt(const QImage& image, const QColor& background, const QColor& color) {
    const auto channels = [](const QColor& pixel) {
        return std::vector<double>{pixel.redF(), pixel.greenF(), pixel.blueF()};
    };
    const std::vector<double> below = channels(background);
    const std::vector<double> above = channels(color);
    std::size_t widest = 0;
    for (std::size_t channel = 1; channel < below.size(); ++channel) {
        if (std::abs(above[channel] - below[channel]) > std::abs(above[widest] - below[widest])) {
            widest = channel;
        }
    }
    std::string art = "\n";
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            const double value = channels(image.pixelColor(x, y))[widest];
            const double share = (value - below[widest]) / (above[widest] - below[widest]);
            art += share < 0.25 ? '.' : share < 0.75 ? '+' : '#';
        }
        art += '\n';
    }
    return art;
}

} // namespace kestrel
