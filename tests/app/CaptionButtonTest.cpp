#include "CaptionButton.h"

#include "ContinuousRectangle.h"
#include "Corners.h"
#include "FocusRing.h"
#include "PixelArt.h"
#include "Scenario.h"
#include "ThemeColor.h"

#include <QImage>
#include <QPainter>
#include <QPalette>
#include <QPen>
#include <QPolygonF>
#include <QWidget>

#include <gtest/gtest.h>

#include <functional>
#include <string>

namespace kestrel {
namespace {

using Action = CaptionButton::Action;

const char* const cross = R"(
............
.#+......+#.
.+#+....+#+.
..+#+..+#+..
...+#++#+...
....+##+....
....+##+....
...+#++#+...
..+#+..+#+..
.+#+....+#+.
.#+......+#.
............
)";

/// Checks what a button draws in a white window.
class CaptionButtonTest : public ::testing::Test {
  protected:
    CaptionButtonTest() { window_.setPalette(QPalette(QColor(Qt::white))); }

    CaptionButton& add(Action action) {
        auto* button = new CaptionButton(action, &window_);
        button->resize(button->sizeHint());
        return *button;
    }

    QImage picture() { return window_.grab(QRect(0, 0, 36, 28)).toImage(); }

    /// The glyph and a pixel around it.
    std::string glyph() { return pixelArt(picture().copy(12, 8, 12, 12), Qt::white, Qt::black); }

    QWidget window_;
};

TEST_F(CaptionButtonTest, drawsALineToMinimise) {
    add(Action::minimise);
    EXPECT_EQ(glyph(), R"(
............
............
............
............
............
............
.##########.
.++++++++++.
............
............
............
............
)");
}

TEST_F(CaptionButtonTest, drawsAFrameToMaximise) {
    add(Action::maximise);
    EXPECT_EQ(glyph(), R"(
............
.+########+.
.##++++++##.
.#+......+#.
.#+......+#.
.#+......+#.
.#+......+#.
.#+......+#.
.#+......+#.
.##++++++##.
.+########+.
............
)");
}

TEST_F(CaptionButtonTest, drawsTwoFramesToRestore) {
    add(Action::maximise).setWindowMaximised(true);
    EXPECT_EQ(glyph(), R"(
............
...########.
...++++++##.
.........+#.
+######+.+#.
##++++##.+#.
#+....+#.+#.
#+....+#.+#.
#+....+#.+#.
#+....+#....
##++++##....
+######+....
)");
}

TEST_F(CaptionButtonTest, drawsACrossToClose) {
    add(Action::close);
    EXPECT_EQ(glyph(), cross);
}

TEST_F(CaptionButtonTest, hasABackgroundInsetByThreePixelsUnderTheMouseAndMoreSoWhenPressed) {
    CaptionButton& button = add(Action::minimise);
    const auto expectBackground = [this](const QColor& color) {
        const QImage image = picture();
        EXPECT_EQ(image.pixelColor(3, 14), color);
        EXPECT_EQ(image.pixelColor(32, 14), color);
        EXPECT_EQ(image.pixelColor(18, 3), color);
        EXPECT_EQ(image.pixelColor(18, 24), color);
        for (const QPoint outside :
             {QPoint(2, 14), QPoint(33, 14), QPoint(18, 2), QPoint(18, 25)}) {
            EXPECT_EQ(image.pixelColor(outside), QColor(Qt::white));
        }
        EXPECT_EQ(image.pixelColor(3, 3), QColor(Qt::white)) << "the corner is rounded";
    };
    expectBackground(Qt::white);
    button.setAttribute(Qt::WA_UnderMouse);
    expectBackground(QColor(237, 237, 237));
    button.setDown(true);
    expectBackground(QColor(219, 219, 219));
}

TEST_F(CaptionButtonTest, isADarkerRedWhenCloseIsPressed) {
    CaptionButton& button = add(Action::close);
    button.setDown(true);
    const QColor red = ThemeColor(ThemeColor::Name::redFill).color(window_.palette());
    EXPECT_EQ(picture().pixelColor(4, 14).rgb(), red.darker(120).rgb());
    EXPECT_EQ(pixelArt(picture().copy(12, 8, 12, 12), red.darker(120), Qt::white), cross);
}

TEST_F(CaptionButtonTest, hasAPurpleRingAroundItsBackgroundForKeyboardFocus) {
    CaptionButton& button = add(Action::maximise);
    ASSERT_TRUE(showActive(window_));
    button.setFocus(Qt::TabFocusReason);
    QTest::keyClick(&button, Qt::Key_Shift);
    const QColor purple = ThemeColor(ThemeColor::Name::purple).color(window_.palette());
    const QImage image = picture();
    EXPECT_EQ(image.pixelColor(3, 14), purple);
    EXPECT_EQ(image.pixelColor(4, 14), purple);
    EXPECT_NE(image.pixelColor(5, 14), purple);
    EXPECT_EQ(image.pixelColor(18, 24), purple);
}

TEST_F(CaptionButtonTest, hasAWhiteRingOnTheRedOfClose) {
    CaptionButton& button = add(Action::close);
    ASSERT_TRUE(showActive(window_));
    button.setFocus(Qt::TabFocusReason);
    QTest::keyClick(&button, Qt::Key_Shift);
    button.setDown(true);
    const QColor red = ThemeColor(ThemeColor::Name::redFill).color(window_.palette());
    const QImage image = picture();
    EXPECT_EQ(image.pixelColor(4, 14), QColor(Qt::white));
    EXPECT_EQ(image.pixelColor(5, 14).rgb(), red.darker(120).rgb());
}

TEST_F(CaptionButtonTest, hasRoundCornersOfSixPixelsAroundItsBackgroundAndItsRing) {
    CaptionButton& button = add(Action::minimise);
    const QRect background(3, 3, 30, 22);
    const auto expectCorners = [&](const std::function<void(QPainter&)>& paint) {
        const QImage expected = paintedOn(Qt::white, background.size(), paint);
        EXPECT_TRUE(haveEqualCorners(picture().copy(background), expected, 9));
    };
    const auto drawFill = [](QPainter& painter) {
        painter.setPen(Qt::NoPen);
        painter.setBrush(QColor(219, 219, 219));
        painter.drawPath(continuousRectangle(QRectF(0, 0, 30, 22), 6));
    };
    button.setDown(true);
    expectCorners(drawFill);
    ASSERT_TRUE(showActive(window_));
    button.setFocus(Qt::TabFocusReason);
    QTest::keyClick(&button, Qt::Key_Shift);
    expectCorners([&](QPainter& painter) {
        drawFill(painter);
        drawFocusRing(painter, QRectF(0, 0, 30, 22), 6,
                      ThemeColor(ThemeColor::Name::purple).color(window_.palette()));
    });
}

TEST_F(CaptionButtonTest, roundsTheEndsAndTheCornersOfItsLines) {
    const auto magnified = [](CaptionButton& button) {
        QImage image(QSize(36, 28) * 4, QImage::Format_RGB32);
        image.setDevicePixelRatio(4);
        image.fill(Qt::white);
        button.setPalette(QPalette(QColor(Qt::white)));
        button.render(&image, {}, {}, QWidget::DrawChildren);
        image.setDevicePixelRatio(1);
        return image;
    };
    const auto expected = [](const std::function<void(QPainter&)>& paint) {
        return paintedOn(Qt::white, QSize(36, 28) * 4, [&paint](QPainter& painter) {
            painter.scale(4, 4);
            painter.setPen(QPen(Qt::black, 1.5, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
            paint(painter);
        });
    };
    EXPECT_EQ(magnified(add(Action::minimise)), expected([](QPainter& painter) {
                  painter.drawLine(QPointF(13.75, 14.75), QPointF(22.25, 14.75));
              }));
    EXPECT_EQ(magnified(add(Action::close)), expected([](QPainter& painter) {
                  painter.drawLine(QPointF(13.75, 9.75), QPointF(22.25, 18.25));
                  painter.drawLine(QPointF(22.25, 9.75), QPointF(13.75, 18.25));
              }));
    EXPECT_EQ(magnified(add(Action::maximise)), expected([](QPainter& painter) {
                  painter.drawRoundedRect(QRectF(13.75, 9.75, 8.5, 8.5), 1, 1);
              }));
    CaptionButton& restore = add(Action::maximise);
    restore.setWindowMaximised(true);
    EXPECT_EQ(magnified(restore), expected([](QPainter& painter) {
                  painter.drawRoundedRect(QRectF(12.75, 12.75, 6.5, 6.5), 1, 1);
                  painter.drawPolyline(QPolygonF({{15.75, 9.75}, {22.25, 9.75}, {22.25, 16.25}}));
              }));
}

} // namespace
} // namespace kestrel
