#pragma once

#include <QColor>
#include <QImage>
#include <QPainter>
#include <QPoint>
#include <QSize>

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <functional>

namespace kestrel {

/// What a function paints on a background, with antialiasing.
inline QImage paintedOn(const QColor& background, QSize size,
                        const std::function<void(QPainter&)>& paint) {
    QImage image(size, QImage::Format_RGB32);
    image.fill(background);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    paint(painter);
    return image;
}

/// Returns whether two images are equal in squares of this side at their corners, but for rounding.
inline ::testing::AssertionResult haveEqualCorners(const QImage& actual, const QImage& expected,
                                                   int side) {
    if (actual.size() != expected.size()) {
        return ::testing::AssertionFailure() << "the sizes differ";
    }
    const QPoint last(actual.width() - side, actual.height() - side);
    for (const QPoint corner :
         {QPoint(0, 0), QPoint(last.x(), 0), QPoint(0, last.y()), QPoint(last.x(), last.y())}) {
        for (int y = corner.y(); y < corner.y() + side; ++y) {
            for (int x = corner.x(); x < corner.x() + side; ++x) {
                const QColor a = actual.pixelColor(x, y);
                const QColor b = expected.pixelColor(x, y);
                if (std::max({std::abs(a.red() - b.red()), std::abs(a.green() - b.green()),
                              std::abs(a.blue() - b.blue())}) > 1) {
                    return ::testing::AssertionFailure()
                           << a.name().toStdString() << " at (" << x << ", " << y << ") is not "
                           << b.name().toStdString();
                }
            }
        }
    }
    return ::testing::AssertionSuccess();
}

} // namespace kestrel
