#include "FormatButton.h"

#include "ContinuousRectangle.h"
#include "Corners.h"
#include "FocusRing.h"
#include "MixedColor.h"
#include "PixelArt.h"
#include "Scenario.h"
#include "SymbolPlaces.h"
#include "ThemeColor.h"

#include <QImage>
#include <QPainter>
#include <QPalette>

#include <gtest/gtest.h>

#include <functional>

namespace kestrel {
namespace {

/// Checks the background of a format's button in a black window.
class FormatButtonTest : public ::testing::Test {
  protected:
    FormatButtonTest() {
        window_.setPalette(QPalette(QColor(Qt::black)));
        button_.setGeometry(0, 0, 200, 36);
    }

    /// The opacity of the white background.
    double opacity() { return picture().pixelColor(120, 4).redF(); }

    QImage picture() { return window_.grab(button_.geometry()).toImage(); }

    QWidget window_;
    FormatButton button_{OutputFormat::mp3, [] {}, &window_};
};

TEST_F(FormatButtonTest, isFilledOnlyWhileItIsSelected) {
    const double tolerance = 1.0 / 255;
    EXPECT_EQ(opacity(), 0);
    button_.setAttribute(Qt::WA_UnderMouse);
    EXPECT_EQ(opacity(), 0);
    EXPECT_NEAR(picture().pixelColor(120, 0).redF(), 0.11, tolerance) << "the outline";
    button_.setDown(true);
    EXPECT_EQ(opacity(), 0);
    button_.setSelected(true);
    EXPECT_NEAR(opacity(), 0.11, tolerance);
    EXPECT_NEAR(picture().pixelColor(120, 0).redF(), 0.11, tolerance) << "no outline";
    button_.setDown(false);
    EXPECT_NEAR(opacity(), 0.11, tolerance);
    button_.setAttribute(Qt::WA_UnderMouse, false);
    EXPECT_NEAR(opacity(), 0.11, tolerance);
    EXPECT_EQ(picture().pixelColor(0, 0), QColor(Qt::black)) << "the corner is round";
    EXPECT_NE(picture().pixelColor(5, 2), QColor(Qt::black));
}

TEST_F(FormatButtonTest, hasAPurpleRingForKeyboardFocus) {
    ASSERT_TRUE(showActive(window_));
    button_.setFocus(Qt::TabFocusReason);
    QTest::keyClick(&button_, Qt::Key_Shift);
    settle();
    const QColor purple(0xD0, 0x84, 0xFA);
    EXPECT_EQ(picture().pixelColor(0, 18), purple);
    EXPECT_EQ(picture().pixelColor(1, 18), purple);
    EXPECT_NE(picture().pixelColor(2, 18), purple);
    EXPECT_EQ(picture().pixelColor(199, 18), purple);
    EXPECT_EQ(picture().pixelColor(0, 2), QColor(Qt::black)) << "the corner is round";
}

TEST_F(FormatButtonTest, centresItsTextBesideTheSymbol) {
    for (const int size : {11, 12, 13, 14}) {
        QFont font = button_.font();
        font.setPixelSize(size);
        button_.setFont(font);
        const QImage shown = picture();
        QImage expected(shown.size(), QImage::Format_RGB32);
        expected.fill(Qt::black);
        QPainter painter(&expected);
        painter.setFont(font);
        painter.setPen(Qt::white);
        painter.drawText(QRect(12 + 18 + 10, 0, 148, 36), Qt::AlignLeft | Qt::AlignVCenter,
                         button_.text());
        painter.end();
        const QRect text(36, 0, 100, 36);
        EXPECT_EQ(pixelArt(shown.copy(text), Qt::black, Qt::white),
                  pixelArt(expected.copy(text), Qt::black, Qt::white));
    }
}

TEST_F(FormatButtonTest, mirrorsItsContents) {
    button_.setSelected(true);
    button_.setLayoutDirection(Qt::RightToLeft);
    EXPECT_EQ(placeOf(Symbol::musicNote, 18, Qt::white, picture()),
              QRect(200 - 12 - 18, 9, 18, 18));
    EXPECT_EQ(placeOf(Symbol::checkmarkCircleFill, 16, QColor(0xD0, 0x84, 0xFA), picture()),
              QRect(13, 10, 16, 16));
}

TEST_F(FormatButtonTest, showsItsContentsPalerWhilePressed) {
    button_.setDown(true);
    const QColor pale = mixed(Qt::black, Qt::white, 0.75);
    EXPECT_EQ(placeOf(Symbol::musicNote, 18, pale, picture()), QRect(12, 9, 18, 18));
    button_.setSelected(true);
    const QColor tint = mixed(Qt::black, Qt::white, 0.11);
    const QColor purple = ThemeColor(ThemeColor::Name::purple).color(window_.palette());
    EXPECT_EQ(placeOf(Symbol::checkmarkCircleFill, 16, mixed(tint, purple, 0.75), picture()),
              QRect(200 - 12 - 17, 10, 16, 16));
}

TEST_F(FormatButtonTest, hasRoundCornersInEachState) {
    const auto expectCorners = [this](const std::function<void(QPainter&)>& paint) {
        EXPECT_TRUE(haveEqualCorners(picture(), paintedOn(Qt::black, button_.size(), paint), 9));
    };
    const QColor tint(255, 255, 255, qRound(255 * 0.11));
    button_.setAttribute(Qt::WA_UnderMouse);
    expectCorners([&](QPainter& painter) {
        painter.setPen(tint);
        painter.drawPath(continuousRectangle(QRectF(0.5, 0.5, 199, 35), 9));
    });
    button_.setSelected(true);
    const auto drawFill = [&](QPainter& painter) {
        painter.setPen(Qt::NoPen);
        painter.setBrush(tint);
        painter.drawPath(continuousRectangle(QRectF(0, 0, 200, 36), 9));
    };
    expectCorners(drawFill);
    ASSERT_TRUE(showActive(window_));
    button_.setFocus(Qt::TabFocusReason);
    QTest::keyClick(&button_, Qt::Key_Shift);
    settle();
    expectCorners([&](QPainter& painter) {
        drawFill(painter);
        drawFocusRing(painter, QRectF(0, 0, 200, 36), 9,
                      ThemeColor(ThemeColor::Name::purple).color(window_.palette()));
    });
}

TEST_F(FormatButtonTest, hasTheSizeOfAPlainButtonButAHeightOfItsOwn) {
    Button plain(Button::Variant::plain, button_.text());
    plain.setTextFont({TextStyle::subheadline});
    EXPECT_EQ(button_.sizeHint(), plain.sizeHint());
    EXPECT_EQ(button_.minimumHeight(), 36);
    EXPECT_EQ(button_.maximumHeight(), 36);
}

} // namespace
} // namespace kestrel
