#include "PixelArt.h"
#include "PopUpButton.h"
#include "QualitySlider.h"
#include "Scenario.h"

#include <QImage>

#include <gtest/gtest.h>

namespace kestrel {
namespace {

const QColor lightGrey(0xEE, 0xEE, 0xEE);
const QColor focusPurple(0x95, 0x40, 0xC8);

/// Gives the widget the keyboard focus and returns its picture in a light window.
QImage pictureWithFocus(QWidget& window, QWidget& widget) {
    EXPECT_TRUE(showActive(window));
    widget.setFocus(Qt::TabFocusReason);
    QTest::keyClick(&widget, Qt::Key_Shift);
    settle();
    return window.grab(widget.geometry()).toImage();
}

TEST(ControlFocusTest, isAPurpleRingAroundTheThumbThatHasTheFocus) {
    QWidget window;
    window.setPalette(QPalette(QColor(Qt::black), lightGrey));
    QualitySlider slider(&window);
    slider.setGeometry(0, 0, 60, 24);
    slider.showQuality(100);
    const QImage image = pictureWithFocus(window, slider);
    EXPECT_EQ(pixelArt(image.copy(40, 3, 20, 18), lightGrey, focusPurple), R"(
........+####+......
......+########+....
.....###......###...
....##+........+##..
...+#+..........+#+.
...##............##.
..+#..............#+
####..............##
####..............##
####..............##
####..............##
..+#..............#+
...##............##.
...+#+..........+#+.
....##+........+##..
.....###......###...
......+########+....
........+####+......
)");
}

TEST(ControlFocusTest, isAPurpleRingAroundTheComboBoxThatHasTheFocus) {
    QWidget window;
    window.setPalette(QPalette(QColor(Qt::black), lightGrey));
    PopUpButton box(&window);
    box.setGeometry(0, 0, 60, 28);
    const QImage image = pictureWithFocus(window, box);
    EXPECT_EQ(image.pixelColor(0, 14), focusPurple);
    EXPECT_EQ(image.pixelColor(1, 14), focusPurple);
    EXPECT_NE(image.pixelColor(2, 14), focusPurple);
    EXPECT_EQ(image.pixelColor(20, 0), focusPurple);
}

} // namespace
} // namespace kestrel
