#include "SymbolBadge.h"

#include "ContinuousRectangle.h"
#include "Corners.h"
#include "SymbolPlaces.h"

#include <QBrush>
#include <QFont>
#include <QImage>
#include <QPainter>

#include <gtest/gtest.h>

namespace kestrel {
namespace {

QImage badgeWithFont(int fontSize) {
    QFont font;
    font.setPixelSize(fontSize);
    QImage image(44, 44, QImage::Format_RGB32);
    image.fill(Qt::white);
    QPainter painter(&image);
    drawSymbolBadge(painter, image.rect(), 12, QColor(Qt::blue), Symbol::folderFill, font,
                    Qt::yellow);
    return image;
}

TEST(SymbolBadgeTest, hasASymbolOfItsFontsSizeInItsMiddle) {
    QFont font;
    font.setPixelSize(16);
    const int side = symbolSize(font);
    const int margin = (44 - side) / 2;
    EXPECT_EQ(placeOf(Symbol::folderFill, side, Qt::yellow, badgeWithFont(16)),
              QRect(margin, margin, side, side));
}

TEST(SymbolBadgeTest, keepsALargeSymbolSixPixelsFromItsEdges) {
    EXPECT_EQ(placeOf(Symbol::folderFill, 32, Qt::yellow, badgeWithFont(100)), QRect(6, 6, 32, 32));
}

TEST(SymbolBadgeTest, isAContinuousRectangleWithoutALine) {
    const QImage expected = paintedOn(Qt::white, QSize(44, 44), [](QPainter& painter) {
        painter.setPen(Qt::NoPen);
        painter.setBrush(Qt::blue);
        painter.drawPath(continuousRectangle(QRectF(0, 0, 44, 44), 12));
    });
    EXPECT_TRUE(haveEqualCorners(badgeWithFont(16), expected, 10));
}

} // namespace
} // namespace kestrel
