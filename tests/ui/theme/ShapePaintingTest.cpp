#include "ShapePainting.h"

#include "ContinuousRectangle.h"

#include <QBrush>
#include <QImage>
#include <QLinearGradient>
#include <QPainter>
#include <QPainterPath>
#include <QPen>
#include <QRegion>

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <iterator>
#include <vector>

namespace kestrel {
namespace {

using Paint = std::function<void(QPainter&)>;

const QColor translucent(200, 30, 90, 77);

QImage paintedShapes(double devicePixelRatio, const Paint& paint) {
    QImage image(QSize(500, 400) * devicePixelRatio, QImage::Format_RGB32);
    image.setDevicePixelRatio(devicePixelRatio);
    image.fill(QColor(30, 60, 90));
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.translate(12, 8);
    paint(painter);
    return image;
}

/// Small and large, on and off the pixels, and beyond the image's edge.
std::vector<QPainterPath> shapes() {
    std::vector<QPainterPath> paths;
    for (const QRectF& rect :
         {QRectF(0, 0, 44, 44), QRectF(3.5, 0.5, 220, 56), QRectF(1, 2, 5, 390), QRectF(7, 7, 3, 1),
          QRectF(0.5, 0.5, 450, 350), QRectF(460, 20, 60, 60)}) {
        paths.push_back(continuousRectangle(rect, 18));
        paths.emplace_back().addEllipse(rect);
    }
    return paths;
}

std::vector<QPen> pens() {
    std::vector<QPen> all;
    for (const double width : {1.0, 2.0}) {
        all.emplace_back(translucent, width);
        QPen dashes(translucent, width, Qt::CustomDashLine, Qt::FlatCap);
        dashes.setDashPattern({7 / width, 7 / width});
        all.push_back(dashes);
    }
    return all;
}

int maxDifference(const QImage& one, const QImage& other) {
    int difference = 0;
    if (one == other) {
        return difference;
    }
    for (int y = 0; y < one.height(); ++y) {
        for (int x = 0; x < one.width(); ++x) {
            const QRgb a = one.pixel(x, y);
            const QRgb b = other.pixel(x, y);
            difference = std::max({difference, std::abs(qRed(a) - qRed(b)),
                                   std::abs(qGreen(a) - qGreen(b)), std::abs(qBlue(a) - qBlue(b))});
        }
    }
    return difference;
}

/// Up to rounding errors.
void expectEqual(const Paint& expected, const Paint& actual) {
    for (const double ratio : {1.0, 1.25, 1.5, 2.0}) {
        EXPECT_LE(maxDifference(paintedShapes(ratio, actual), paintedShapes(ratio, expected)), 2)
            << ratio;
    }
}

void paintAllShapes(QPainter& painter) {
    QLinearGradient gradient(0, 0, 200, 300);
    gradient.setColorAt(0, Qt::red);
    gradient.setColorAt(1, Qt::blue);
    // Within the size of the window's buttons and badges.
    for (const QRectF& rect : {QRectF(0, 0, 112, 112), QRectF(3.5, 0.5, 220, 56)}) {
        const QPainterPath shape = continuousRectangle(rect, 12);
        fillShape(painter, shape, translucent);
        fillShape(painter, shape, gradient);
        for (const QPen& pen : pens()) {
            strokeShape(painter, shape, pen);
        }
    }
    QPen dashes(translucent, 1, Qt::CustomDashLine, Qt::FlatCap);
    dashes.setDashPattern({7, 7});
    strokeShape(painter, continuousRectangle(QRectF(0.5, 0.5, 450, 350), 18), dashes);
}

std::ptrdiff_t threadCount() {
    return std::distance(std::filesystem::directory_iterator("/proc/self/task"),
                         std::filesystem::directory_iterator());
}

[[noreturn]] void exitWithThreadsStarted() {
    const std::ptrdiff_t before = threadCount();
    paintedShapes(1.0, [](QPainter& painter) {
        paintAllShapes(painter);
        // As a window's region may be: not a rectangle.
        painter.setClipRegion(QRegion(0, 0, 50, 100) + QRegion(0, 100, 40, 300));
        fillShape(painter, continuousRectangle(QRectF(1, 2, 8, 390), 4), translucent);
    });
    std::_Exit(static_cast<int>(threadCount() - before));
}

TEST(ShapePaintingTest, fillsThePixelsThatQPainterFills) {
    QLinearGradient gradient(0, 0, 200, 300);
    gradient.setColorAt(0, Qt::red);
    gradient.setColorAt(1, QColor(0, 0, 255, 90));
    for (const QPainterPath& shape : shapes()) {
        for (const QBrush& brush : {QBrush(translucent), QBrush(Qt::yellow), QBrush(gradient)}) {
            expectEqual([&](QPainter& painter) { painter.fillPath(shape, brush); },
                        [&](QPainter& painter) { fillShape(painter, shape, brush); });
        }
    }
}

TEST(ShapePaintingTest, strokesThePixelsThatQPainterStrokes) {
    for (const QPainterPath& shape : shapes()) {
        for (const QPen& pen : pens()) {
            expectEqual([&](QPainter& painter) { painter.strokePath(shape, pen); },
                        [&](QPainter& painter) { strokeShape(painter, shape, pen); });
        }
    }
}

TEST(ShapePaintingTest, respectsTheClip) {
    const QRect clip(20, 10, 30, 30);
    const QImage blank = paintedShapes(1, [](QPainter&) {});
    QImage image = paintedShapes(1, [&](QPainter& painter) {
        painter.setClipRect(clip);
        paintAllShapes(painter);
    });
    EXPECT_NE(image.pixel(40, 30), blank.pixel(40, 30));
    QPainter(&image).drawImage(clip.translated(12, 8), blank, clip.translated(12, 8));
    EXPECT_EQ(image, blank);
}

TEST(ShapePaintingTest, preservesThePaintersState) {
    paintedShapes(2, [](QPainter& painter) {
        painter.setPen(Qt::green);
        painter.setBrush(Qt::cyan);
        painter.setRenderHints(QPainter::Antialiasing, false);
        const QTransform transform = painter.transform();
        paintAllShapes(painter);
        EXPECT_EQ(painter.pen().color(), Qt::green);
        EXPECT_EQ(painter.brush().color(), Qt::cyan);
        EXPECT_FALSE(painter.testRenderHint(QPainter::Antialiasing));
        EXPECT_EQ(painter.transform(), transform);
        EXPECT_FALSE(painter.hasClipping());
    });
}

TEST(ShapePaintingDeathTest, startsNoThread) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_EXIT(exitWithThreadsStarted(), ::testing::ExitedWithCode(0), "");
}

} // namespace
} // namespace kestrel
