#include "ContinuousRectangle.h"
#include "ControlStyle.h"
#include "Corners.h"
#include "StyleOptionsFixture.h"
#include "ThemeColor.h"

#include <QImage>
#include <QPainter>
#include <QPen>
#include <QPolygonF>
#include <QStyleOption>

#include <gtest/gtest.h>

namespace kestrel {
namespace {

constexpr int magnification = 8;

/// Checks what the style draws on white for a light palette, as under a magnifying glass.
class ControlDetailsTest : public StyleOptionsFixture {
  protected:
    ControlDetailsTest() : StyleOptionsFixture(QColor(Qt::white)) {}

    QImage magnified(QStyle::ComplexControl control, const QStyleOptionComplex& option) const {
        return paintedOn(Qt::white, option.rect.size() * magnification, [&](QPainter& painter) {
            painter.scale(magnification, magnification);
            style_.drawComplexControl(control, &option, &painter, nullptr);
        });
    }

    QColor color(ThemeColor color) const { return color.color(palette_); }
};

TEST_F(ControlDetailsTest, drawsChevronsWithRoundEndsAndTips) {
    const QImage image = magnified(QStyle::CC_ComboBox, comboBox());
    const QImage expected =
        paintedOn(color(ThemeColor::Name::purpleFill), image.size(), [](QPainter& painter) {
            painter.scale(magnification, magnification);
            painter.setPen(QPen(Qt::white, 1.5, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
            painter.drawPolyline(QPolygonF({{43, 12}, {46, 9}, {49, 12}}));
            painter.drawPolyline(QPolygonF({{43, 16}, {46, 19}, {49, 16}}));
        });
    const QRect inside(QPoint(38, 6) * magnification, QSize(16, 16) * magnification);
    EXPECT_EQ(image.copy(inside), expected.copy(inside));
}

TEST_F(ControlDetailsTest, linesTheThumbInATransparentBlack) {
    QStyleOptionSlider option = slider();
    for (const bool isPressed : {false, true}) {
        option.state.setFlag(QStyle::State_Sunken, isPressed);
        const QImage image = magnified(QStyle::CC_Slider, option);
        const QRect thumb =
            style_.subControlRect(QStyle::CC_Slider, &option, QStyle::SC_SliderHandle, nullptr);
        const auto at = [&](double down) {
            return image.pixelColor(thumb.center().x() * magnification + magnification,
                                    static_cast<int>((thumb.top() + down) * magnification));
        };
        // The line is one pixel wide; its outer half is outside the fill.
        const QColor fill = isPressed ? QColor(0xE4, 0xE4, 0xEA) : QColor(Qt::white);
        EXPECT_EQ(at(0.25), QColor(Qt::white));
        EXPECT_EQ(at(0.75), QColor(185, 185, 185));
        EXPECT_EQ(at(1.75), fill);
        EXPECT_EQ(at(9), fill);
    }
}

TEST_F(ControlDetailsTest, roundsTheComboBoxAndItsIndicator) {
    const QStyleOptionComboBox option = comboBox();
    const QImage image = magnified(QStyle::CC_ComboBox, option);
    const QColor fill =
        ThemeColor(ThemeColor::Name::primary).withOpacity(0.12).color(option.palette);
    const QImage expected = paintedOn(Qt::white, image.size(), [&](QPainter& painter) {
        painter.scale(magnification, magnification);
        painter.setPen(Qt::NoPen);
        painter.setBrush(fill);
        painter.drawPath(continuousRectangle(QRectF(0, 0, 60, 28), 7));
        painter.setBrush(color(ThemeColor::Name::purpleFill));
        painter.drawPath(continuousRectangle(QRectF(36, 4, 20, 20), 5));
    });
    EXPECT_TRUE(haveEqualCorners(image, expected, 4 * magnification));
    const QRect badge(36 * magnification, 4 * magnification, 20 * magnification,
                      20 * magnification);
    EXPECT_TRUE(haveEqualCorners(image.copy(badge), expected.copy(badge), 4 * magnification));
}

TEST_F(ControlDetailsTest, drawsNothingForOptionsOfAnotherControl) {
    const QStyleOption other;
    const QStyleOptionComboBox box = comboBox();
    const auto drawn = [this](QStyle::ControlElement element, const QStyleOption& option) {
        return paintedOn(Qt::white, QSize(60, 28), [&](QPainter& painter) {
            style_.drawControl(element, &option, &painter, nullptr);
        });
    };
    const QImage blank = paintedOn(Qt::white, QSize(60, 28), [](QPainter&) {});
    EXPECT_EQ(drawn(QStyle::CE_ComboBoxLabel, other), blank);
    EXPECT_EQ(drawn(QStyle::CE_ProgressBar, other), blank);
    EXPECT_EQ(drawn(QStyle::CE_ProgressBar, box), blank);
}

TEST_F(ControlDetailsTest, writesTheTextOfAComboBoxForItsLabelAlone) {
    QStyleOptionComboBox option = comboBox();
    option.currentText = QStringLiteral("text");
    const auto drawn = [&](QStyle::ControlElement element) {
        return paintedOn(Qt::white, QSize(60, 28), [&](QPainter& painter) {
            style_.drawControl(element, &option, &painter, nullptr);
        });
    };
    const QImage blank = paintedOn(Qt::white, QSize(60, 28), [](QPainter&) {});
    EXPECT_NE(drawn(QStyle::CE_ComboBoxLabel), blank);
    EXPECT_EQ(drawn(QStyle::CE_PushButtonLabel), blank);
}

TEST_F(ControlDetailsTest, fillsAProgressBarOfFewStepsOrNone) {
    auto bar = option<QStyleOptionProgressBar>({40, 6});
    const auto picture = [&](int maximum, int progress) {
        bar.minimum = 0;
        bar.maximum = maximum;
        bar.progress = progress;
        return paintedOn(Qt::white, QSize(40, 6), [&](QPainter& painter) {
            style_.drawControl(QStyle::CE_ProgressBar, &bar, &painter, nullptr);
        });
    };
    EXPECT_EQ(picture(1, 1).pixelColor(30, 3), color(ThemeColor::Name::purple));
    EXPECT_EQ(picture(0, 0), picture(1, 0));
}

} // namespace
} // namespace kestrel
