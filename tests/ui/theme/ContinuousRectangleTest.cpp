#include "ContinuousRectangle.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

namespace kestrel {
namespace {

TEST(ContinuousRectangleTest, fillsItsRectangle) {
    const QRectF rect(10, 20, 200, 100);
    const QPainterPath path = continuousRectangle(rect, 18);
    EXPECT_EQ(path.boundingRect(), rect);
    EXPECT_TRUE(path.contains(rect.center()));
    EXPECT_FALSE(path.contains(QPointF(11, 21)));
}

TEST(ContinuousRectangleTest, roundsItsCornersAsFarInAsCirclesDo) {
    const double radius = 18;
    const QPainterPath path = continuousRectangle(QRectF(0, 0, 200, 100), radius);
    const double middle = radius * (1 - 1 / std::numbers::sqrt2);
    EXPECT_FALSE(path.contains(QPointF(middle - 0.2, middle - 0.2)));
    EXPECT_TRUE(path.contains(QPointF(middle + 0.2, middle + 0.2)));
    EXPECT_FALSE(path.contains(QPointF(200 - middle + 0.2, 100 - middle + 0.2)));
    EXPECT_TRUE(path.contains(QPointF(200 - middle - 0.2, 100 - middle - 0.2)));
}

TEST(ContinuousRectangleTest, beginsItsCornersEarlierThanCirclesDo) {
    const QPainterPath path = continuousRectangle(QRectF(0, 0, 200, 100), 18);
    // A circular corner of this radius has already ended there.
    EXPECT_FALSE(path.contains(QPointF(18.5, 0.05)));
    EXPECT_TRUE(path.contains(QPointF(28, 0.05)));
}

TEST(ContinuousRectangleTest, becomesACircleWhereThereIsNoRoom) {
    const QPainterPath path = continuousRectangle(QRectF(-10, -10, 20, 20), 50);
    for (int degrees = 0; degrees < 360; degrees += 15) {
        const double angle = degrees * std::numbers::pi / 180;
        const QPointF direction(std::cos(angle), std::sin(angle));
        EXPECT_TRUE(path.contains(direction * 9.9)) << degrees;
        EXPECT_FALSE(path.contains(direction * 10.1)) << degrees;
    }
}

} // namespace
} // namespace kestrel
