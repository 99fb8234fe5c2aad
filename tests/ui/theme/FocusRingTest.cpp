#include "FocusRing.h"
#include "PaintedFromFile.h"

#include <QImage>
#include <QPainter>
#include <QPen>

#include <gtest/gtest.h>

namespace kestrel {
namespace {

TEST(FocusRing, isTwoPixelsWideJustInsideItsRectangle) {
    QImage image = blankImage(40);
    QPainter painter(&image);
    drawFocusRing(painter, QRectF(4, 4, 32, 32), 6, Qt::red);
    painter.end();
    for (int pixel = 0; pixel < 40; ++pixel) {
        const bool isRing = pixel == 4 || pixel == 5 || pixel == 34 || pixel == 35;
        const QColor expected = isRing ? QColor(Qt::red) : QColor(Qt::transparent);
        EXPECT_EQ(image.pixelColor(pixel, 20), expected) << "across, pixel " << pixel;
        EXPECT_EQ(image.pixelColor(20, pixel), expected) << "down, pixel " << pixel;
    }
    EXPECT_EQ(image.pixelColor(4, 4).alpha(), 0) << "the corner is rounded";
}

TEST(FocusRing, leavesThePainterAsItWas) {
    QImage image = blankImage(40);
    QPainter painter(&image);
    const QPen pen(Qt::green, 3);
    painter.setPen(pen);
    painter.setBrush(Qt::blue);
    drawFocusRing(painter, QRectF(4, 4, 32, 32), 6, Qt::red);
    EXPECT_EQ(painter.pen(), pen);
    EXPECT_EQ(painter.brush(), QBrush(Qt::blue));
    EXPECT_FALSE(painter.testRenderHint(QPainter::Antialiasing));
}

} // namespace
} // namespace kestrel
