#include "ControlStyle.h"

#include "PixelArt.h"
#include "StyleOptionsFixture.h"
#include "ThemeColor.h"

#include <QImage>
#include <QPainter>
#include <QStyleOption>

#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <functional>
#include <string>

namespace kestrel {
namespace {

const QColor accent(0x95, 0x40, 0xC8);

/// The primary colour, black, at this opacity on white.
QColor grey(double opacity) {
    const auto level = static_cast<int>(std::lround(255 * (1 - opacity)));
    return {level, level, level};
}

/// Rounding differs by one between blending once and twice.
::testing::AssertionResult isNear(const QColor& actual, const QColor& expected) {
    const bool isEqual = std::abs(actual.red() - expected.red()) <= 1 &&
                         std::abs(actual.green() - expected.green()) <= 1 &&
                         std::abs(actual.blue() - expected.blue()) <= 1;
    return (isEqual ? ::testing::AssertionSuccess() : ::testing::AssertionFailure())
           << actual.name().toStdString() << " is not " << expected.name().toStdString();
}

/// Checks what the style draws on white for a light palette, without a widget.
class ControlStyleTest : public StyleOptionsFixture {
  protected:
    ControlStyleTest() : StyleOptionsFixture({QColor(Qt::black), QColor(0xEE, 0xEE, 0xEE)}) {}

    QImage drawn(QStyle::ComplexControl control, const QStyleOptionComplex& option) const {
        return painted(option.rect.size(), [&](QPainter& painter) {
            style_.drawComplexControl(control, &option, &painter, nullptr);
        });
    }

    QImage drawn(QStyle::ControlElement element, const QStyleOption& option) const {
        return painted(option.rect.size(), [&](QPainter& painter) {
            style_.drawControl(element, &option, &painter, nullptr);
        });
    }

  private:
    static QImage painted(QSize size, const std::function<void(QPainter&)>& paint) {
        QImage image(size, QImage::Format_RGB32);
        image.fill(Qt::white);
        QPainter painter(&image);
        paint(painter);
        return image;
    }
};

TEST_F(ControlStyleTest, drawsASliderFilledUpToItsThumb) {
    const QImage image = drawn(QStyle::CC_Slider, slider());
    EXPECT_EQ(pixelArt(image.copy(0, 3, 60, 18), Qt::white, accent), R"(
............................................................
...........................++..++...........................
.........................+........+.........................
........................+..........+........................
.......................+............+.......................
............................................................
......................+..............+......................
.+####################+..............++.....................
.#####################+...............+.....................
.#####################+...............+.....................
.+####################+..............++.....................
......................+..............+......................
............................................................
.......................+............+.......................
........................+..........+........................
.........................+........+.........................
...........................++..++...........................
............................................................
)");
    EXPECT_EQ(pixelArt(image.copy(40, 9, 20, 6), Qt::white, grey(0.18)), R"(
....................
##################+.
###################.
###################.
##################+.
....................
)");
    EXPECT_TRUE(isNear(image.pixelColor(10, 12), accent));
    EXPECT_TRUE(isNear(image.pixelColor(30, 12), QColor(Qt::white)));
    EXPECT_TRUE(isNear(image.pixelColor(50, 12), grey(0.18)));
}

TEST_F(ControlStyleTest, fillsASliderFromTheOtherEndIfItIsUpsideDown) {
    QStyleOptionSlider option = slider();
    option.upsideDown = true;
    option.sliderPosition = 20;
    const QImage image = drawn(QStyle::CC_Slider, option);
    EXPECT_EQ(style_.subControlRect(QStyle::CC_Slider, &option, QStyle::SC_SliderHandle, nullptr),
              QRect(34, 3, 18, 18));
    EXPECT_TRUE(isNear(image.pixelColor(20, 12), grey(0.18)));
    EXPECT_TRUE(isNear(image.pixelColor(55, 12), accent));
}

TEST_F(ControlStyleTest, darkensThePressedThumb) {
    QStyleOptionSlider option = slider();
    option.state |= QStyle::State_Sunken;
    EXPECT_TRUE(
        isNear(drawn(QStyle::CC_Slider, option).pixelColor(30, 12), QColor(0xE4, 0xE4, 0xEA)));
}

TEST_F(ControlStyleTest, dimsADisabledSlider) {
    QStyleOptionSlider option = slider();
    option.state = {};
    const QImage image = drawn(QStyle::CC_Slider, option);
    // On the whole track.
    EXPECT_TRUE(isNear(image.pixelColor(10, 12), QColor(0xCA, 0xA8, 0xDE)));
    EXPECT_TRUE(isNear(image.pixelColor(50, 12), grey(0.18 * 0.4)));
}

TEST_F(ControlStyleTest, placesTheScrollBarsHandleAndPages) {
    const QStyleOptionSlider option = scrollBar();
    const auto rect = [&](QStyle::SubControl part) {
        return style_.subControlRect(QStyle::CC_ScrollBar, &option, part, nullptr);
    };
    EXPECT_EQ(rect(QStyle::SC_ScrollBarGroove), QRect(0, 0, 12, 100));
    EXPECT_EQ(rect(QStyle::SC_ScrollBarSlider), QRect(0, 25, 12, 50));
    EXPECT_EQ(rect(QStyle::SC_ScrollBarSubPage), QRect(0, 0, 12, 25));
    EXPECT_EQ(rect(QStyle::SC_ScrollBarAddPage), QRect(0, 75, 12, 25));
    EXPECT_EQ(rect(QStyle::SC_ScrollBarAddLine), QRect());
}

TEST_F(ControlStyleTest, keepsTheScrollBarsHandleLongEnoughToGrasp) {
    QStyleOptionSlider option = scrollBar();
    option.maximum = 100'000;
    option.sliderPosition = 100'000;
    EXPECT_EQ(
        style_.subControlRect(QStyle::CC_ScrollBar, &option, QStyle::SC_ScrollBarSlider, nullptr),
        QRect(0, 64, 12, 36));
}

TEST_F(ControlStyleTest, drawsTheScrollBarsHandleWithRoundEnds) {
    const QImage image = drawn(QStyle::CC_ScrollBar, scrollBar());
    EXPECT_TRUE(isNear(image.pixelColor(6, 50), grey(0.55)));
    EXPECT_EQ(pixelArt(image.copy(0, 25, 12, 6), Qt::white, grey(0.55)), R"(
............
............
....+##+....
...+####+...
...######...
...######...
)");
    EXPECT_TRUE(isNear(image.pixelColor(6, 71), grey(0.55)));
    EXPECT_TRUE(isNear(image.pixelColor(6, 73), QColor(Qt::white)));
}

TEST_F(ControlStyleTest, drawsAWiderAndDarkerHandleUnderTheMouseAndWhilePressed) {
    for (const QStyle::StateFlag state : {QStyle::State_MouseOver, QStyle::State_Sunken}) {
        QStyleOptionSlider option = scrollBar();
        option.state |= state;
        const QImage image = drawn(QStyle::CC_ScrollBar, option);
        EXPECT_TRUE(isNear(image.pixelColor(1, 50), QColor(Qt::white)));
        EXPECT_TRUE(isNear(image.pixelColor(2, 50), grey(0.7)));
        EXPECT_TRUE(isNear(image.pixelColor(9, 50), grey(0.7)));
        EXPECT_TRUE(isNear(image.pixelColor(10, 50), QColor(Qt::white)));
    }
}

TEST_F(ControlStyleTest, drawsAHorizontalHandleAcross) {
    QStyleOptionSlider option = scrollBar();
    option.orientation = Qt::Horizontal;
    option.rect = QRect(0, 0, 100, 12);
    const QImage image = drawn(QStyle::CC_ScrollBar, option);
    EXPECT_TRUE(isNear(image.pixelColor(26, 6), QColor(Qt::white)));
    EXPECT_TRUE(isNear(image.pixelColor(28, 6), grey(0.55)));
    EXPECT_TRUE(isNear(image.pixelColor(50, 2), QColor(Qt::white)));
    EXPECT_TRUE(isNear(image.pixelColor(50, 3), grey(0.55)));
}

TEST_F(ControlStyleTest, drawsNoHandleWithNothingToScroll) {
    QStyleOptionSlider option = scrollBar();
    option.maximum = 0;
    EXPECT_TRUE(isNear(drawn(QStyle::CC_ScrollBar, option).pixelColor(6, 50), QColor(Qt::white)));
}

TEST_F(ControlStyleTest, drawsTheComboBoxWithChevronsOnPurple) {
    const QImage image = drawn(QStyle::CC_ComboBox, comboBox());
    EXPECT_EQ(pixelArt(image.copy(36, 3, 24, 22), accent, Qt::white), R"(
########################
##++............++######
#+................+#####
+..................+####
+..................+####
.........++.........####
........+##+........####
.......+#++#+.......####
......+#+..+#+......####
......++....++......####
....................####
....................####
......++....++......####
......+#+..+#+......####
.......+#++#+.......####
........+##+........####
.........++.........####
+..................+####
+..................+####
#+................+#####
##++............++######
########################
)");
    EXPECT_TRUE(isNear(image.pixelColor(20, 14), grey(0.12)));
    EXPECT_TRUE(isNear(image.pixelColor(0, 14), grey(0.12)));
    EXPECT_EQ(pixelArt(image.copy(0, 0, 6, 6), Qt::white, grey(0.12)), R"(
....++
..+###
.+####
.#####
+#####
+#####
)");
}

TEST_F(ControlStyleTest, darkensTheComboBoxUnderTheMouseUnlessDisabled) {
    QStyleOptionComboBox option = comboBox();
    option.state |= QStyle::State_MouseOver;
    EXPECT_TRUE(isNear(drawn(QStyle::CC_ComboBox, option).pixelColor(20, 14), grey(0.17)));
    option.state = QStyle::State_MouseOver;
    EXPECT_TRUE(isNear(drawn(QStyle::CC_ComboBox, option).pixelColor(20, 14), grey(0.12 * 0.4)));
}

TEST_F(ControlStyleTest, placesTheComboBoxesTextAndIndicatorByTheDirection) {
    QStyleOptionComboBox option = comboBox();
    const auto rect = [&](QStyle::SubControl part) {
        return style_.subControlRect(QStyle::CC_ComboBox, &option, part, nullptr);
    };
    EXPECT_EQ(rect(QStyle::SC_ComboBoxArrow), QRect(36, 0, 20, 28));
    EXPECT_EQ(rect(QStyle::SC_ComboBoxEditField), QRect(10, 0, 20, 28));
    EXPECT_EQ(rect(QStyle::SC_ComboBoxFrame), QRect(0, 0, 60, 28));
    option.direction = Qt::RightToLeft;
    EXPECT_EQ(rect(QStyle::SC_ComboBoxArrow), QRect(4, 0, 20, 28));
    EXPECT_EQ(rect(QStyle::SC_ComboBoxEditField), QRect(30, 0, 20, 28));
}

TEST_F(ControlStyleTest, drawsTheComboBoxesTextAtItsStartInThePrimaryColour) {
    QStyleOptionComboBox option = comboBox();
    option.currentText = QStringLiteral("|");
    option.palette.setColor(QPalette::WindowText, Qt::red);
    const auto bounds = [&] {
        const QImage image = drawn(QStyle::CE_ComboBoxLabel, option);
        QRect ink;
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x) {
                const QColor pixel = image.pixelColor(x, y);
                EXPECT_EQ(pixel.red(), 255);
                ink |= pixel.green() < 255 ? QRect(x, y, 1, 1) : QRect();
            }
        }
        return ink;
    };
    const QRect leading = bounds();
    EXPECT_GE(leading.left(), 10);
    EXPECT_LT(leading.right(), 20);
    EXPECT_NEAR(leading.center().y(), 14, 2);
    option.direction = Qt::RightToLeft;
    EXPECT_GT(bounds().left(), 40);
}

TEST_F(ControlStyleTest, fillsAProgressBarWithRoundEnds) {
    const QImage image = drawn(QStyle::CE_ProgressBar, progressBar(50));
    EXPECT_EQ(pixelArt(image, Qt::white, accent), R"(
.+################+.....................
+##################+....................
####################....................
####################....................
+##################+....................
.+################+.....................
)");
    EXPECT_EQ(pixelArt(image, Qt::white, grey(0.12)), R"(
.#####################################+.
#######################################+
########################################
########################################
#######################################+
.#####################################+.
)");
    EXPECT_TRUE(isNear(image.pixelColor(30, 3), grey(0.12)));
}

TEST_F(ControlStyleTest, showsTheLeastProgressAsADotAndNoneAsAnEmptyTrack) {
    EXPECT_EQ(pixelArt(drawn(QStyle::CE_ProgressBar, progressBar(1)), Qt::white, accent), R"(
.+##+...................................
+####+..................................
######..................................
######..................................
+####+..................................
.+##+...................................
)");
    EXPECT_TRUE(isNear(drawn(QStyle::CE_ProgressBar, progressBar(0)).pixelColor(2, 3), grey(0.12)));
    EXPECT_TRUE(
        isNear(drawn(QStyle::CE_ProgressBar, progressBar(-20)).pixelColor(2, 3), grey(0.12)));
    EXPECT_TRUE(isNear(drawn(QStyle::CE_ProgressBar, progressBar(200)).pixelColor(37, 3), accent));
}

TEST_F(ControlStyleTest, fillsAProgressBarFromTheRightIfTextIsWrittenSo) {
    QStyleOptionProgressBar option = progressBar(50);
    option.direction = Qt::RightToLeft;
    const QImage image = drawn(QStyle::CE_ProgressBar, option);
    EXPECT_TRUE(isNear(image.pixelColor(18, 3), grey(0.12)));
    EXPECT_TRUE(isNear(image.pixelColor(21, 3), accent));
    EXPECT_TRUE(isNear(image.pixelColor(37, 3), accent));
}

TEST_F(ControlStyleTest, hasItsOwnSizes) {
    const QStyleOptionComboBox box = comboBox();
    EXPECT_EQ(style_.sizeFromContents(QStyle::CT_ComboBox, &box, QSize(50, 10), nullptr),
              QSize(90, 28));
    EXPECT_EQ(style_.sizeFromContents(QStyle::CT_ComboBox, &box, QSize(50, 30), nullptr),
              QSize(90, 38));
    const QStyleOptionSlider bar = slider();
    EXPECT_EQ(style_.sizeFromContents(QStyle::CT_Slider, &bar, QSize(50, 10), nullptr),
              QSize(50, 24));
    EXPECT_EQ(style_.pixelMetric(QStyle::PM_SliderThickness, nullptr, nullptr), 24);
    EXPECT_EQ(style_.pixelMetric(QStyle::PM_SliderControlThickness, nullptr, nullptr), 24);
    EXPECT_EQ(style_.pixelMetric(QStyle::PM_SliderLength, nullptr, nullptr), 18);
    EXPECT_EQ(style_.pixelMetric(QStyle::PM_ScrollBarExtent, nullptr, nullptr), 12);
    EXPECT_EQ(style_.pixelMetric(QStyle::PM_ScrollBarSliderMin, nullptr, nullptr), 36);
}

TEST_F(ControlStyleTest, movesASliderToTheClickAndHidesNoScrollBar) {
    const auto hint = [this](QStyle::StyleHint which) {
        return style_.styleHint(which, nullptr, nullptr, nullptr);
    };
    EXPECT_EQ(hint(QStyle::SH_Slider_AbsoluteSetButtons), static_cast<int>(Qt::LeftButton));
    EXPECT_EQ(hint(QStyle::SH_Slider_PageSetButtons), static_cast<int>(Qt::NoButton));
    EXPECT_EQ(hint(QStyle::SH_ScrollBar_Transient), 0);
}

TEST_F(ControlStyleTest, leavesThePainterAsItWas) {
    QImage image(60, 28, QImage::Format_RGB32);
    QPainter painter(&image);
    const QPen pen(Qt::green, 3);
    painter.setPen(pen);
    const QStyleOptionComboBox box = comboBox();
    style_.drawComplexControl(QStyle::CC_ComboBox, &box, &painter, nullptr);
    const QStyleOptionProgressBar bar = progressBar(50);
    style_.drawControl(QStyle::CE_ProgressBar, &bar, &painter, nullptr);
    EXPECT_EQ(painter.pen(), pen);
    EXPECT_FALSE(painter.testRenderHint(QPainter::Antialiasing));
}

} // namespace
} // namespace kestrel
