#include "CaptionButton.h"

#include "PixelArt.h"
#include "Scenario.h"
#include "ThemeColor.h"

#include <QImage>
#include <QPalette>
#include <QWidget>

#include <gtest/gtest.h>

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

} // namespace
} // namespace kestrel
