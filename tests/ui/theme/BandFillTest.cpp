#include "BandFill.h"

#include <QImage>
#include <QPainter>

#include <gtest/gtest.h>

namespace kestrel {
namespace {

QImage canvas(double devicePixelRatio) {
    QImage image(QSize(40, 400) * devicePixelRatio, QImage::Format_ARGB32_Premultiplied);
    image.setDevicePixelRatio(devicePixelRatio);
    image.fill(Qt::white);
    return image;
}

TEST(BandFillTest, matchesASingleFillRect) {
    const QColor translucent(200, 30, 90, 77);
    for (const double ratio : {1.0, 1.25, 1.5, 1.75, 2.0, 3.0}) {
        for (const QRect& rect : {QRect(3, 0, 1, 400), QRect(0, 7, 33, 391), QRect(5, 1, 9, 65),
                                  QRect(5, 3, 9, 1), QRect(5, 3, 9, 0)}) {
            QImage expected = canvas(ratio);
            QPainter(&expected).fillRect(rect, translucent);
            QImage filled = canvas(ratio);
            QPainter painter(&filled);
            fillInBands(painter, rect, translucent);
            painter.end();
            EXPECT_EQ(filled, expected) << ratio << ' ' << rect.top() << ' ' << rect.height();
        }
    }
}

TEST(BandFillTest, spreadsAGradientOverTheWholeRectangle) {
    QLinearGradient gradient(0, 0, 40, 400);
    gradient.setColorAt(0, Qt::red);
    gradient.setColorAt(1, Qt::blue);
    QImage expected = canvas(1);
    QPainter(&expected).fillRect(QRect(0, 0, 40, 400), gradient);
    QImage filled = canvas(1);
    QPainter painter(&filled);
    fillInBands(painter, QRect(0, 0, 40, 400), gradient);
    painter.end();
    EXPECT_EQ(filled, expected);
}

} // namespace
} // namespace kestrel
