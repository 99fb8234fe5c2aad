#include "Button.h"

#include "ContinuousRectangle.h"
#include "Corners.h"
#include "PixelArt.h"
#include "Scenario.h"
#include "SymbolPlaces.h"
#include "ThemeColor.h"

#include <QImage>
#include <QPainter>
#include <QStyle>
#include <QStyleFactory>

#include <gtest/gtest.h>

#include <cstdlib>
#include <memory>

namespace kestrel {
namespace {

/// Checks where a button in a white window draws its label.
class ButtonLabelTest : public ::testing::Test {
  protected:
    ButtonLabelTest() { window_.setPalette(QPalette(QColor(Qt::white))); }

    void setFontSize(int size) {
        QFont font = button_.font();
        font.setPixelSize(size);
        button_.setFont(font);
        button_.resize(button_.sizeHint());
    }

    int textWidth() const { return button_.fontMetrics().horizontalAdvance(button_.text()) + 1; }

    int symbolSide() const { return symbolSize(button_.font()); }

    QRect placeOfSymbol() {
        return placeOf(Symbol::plus, symbolSide(), Qt::black,
                       window_.grab(button_.geometry()).toImage());
    }

    static std::string art(const QImage& image) { return pixelArt(image, Qt::white, Qt::black); }

    /// Expects the text in this part of the button, centred down, and nothing else from there on.
    void expectText(const QRect& place) {
        const QImage shown = window_.grab(button_.geometry()).toImage();
        const QImage expected = paintedOn(Qt::white, button_.size(), [&](QPainter& painter) {
            painter.setFont(button_.font());
            painter.setPen(Qt::black);
            painter.drawText(place, Qt::AlignLeft | Qt::AlignVCenter, button_.text());
        });
        const QRect part(place.left(), 0, button_.width() - place.left(), button_.height());
        EXPECT_EQ(art(shown.copy(part)), art(expected.copy(part))) << button_.font().pixelSize();
    }

    QWidget window_;
    Button button_{Button::Variant::plain, QStringLiteral("Press"), &window_};
};

TEST_F(ButtonLabelTest, isTheTextBetweenThePaddings) {
    for (const int size : {11, 12, 13, 14}) {
        setFontSize(size);
        for (const int more : {0, 1}) {
            button_.resize(button_.sizeHint() + QSize(0, more));
            expectText(QRect(4, 0, textWidth(), button_.height()));
        }
    }
}

TEST_F(ButtonLabelTest, isTheSymbolAndTheTextSixPixelsFromIt) {
    button_.setSymbol(Symbol::plus);
    for (const int size : {11, 12, 13, 14}) {
        setFontSize(size);
        const QRect symbol = placeOfSymbol();
        EXPECT_EQ(symbol.x(), 4);
        EXPECT_LE(std::abs(symbol.y() - (button_.height() - 1 - symbol.bottom())), 1);
        expectText(QRect(4 + symbolSide() + 6, 0, textWidth(), button_.height()));
    }
}

TEST_F(ButtonLabelTest, isCentredInAWiderButton) {
    button_.setSymbol(Symbol::plus);
    setFontSize(13);
    button_.resize(button_.width() + 60, button_.height());
    EXPECT_EQ(placeOfSymbol().x(), 30 + 4);
    expectText(QRect(30 + 4 + symbolSide() + 6, 0, textWidth(), button_.height()));
}

TEST_F(ButtonLabelTest, beginsFourPixelsFromTheEdgeOfAButtonThatIsTooNarrow) {
    for (const Button::Variant variant : {Button::Variant::plain, Button::Variant::bordered}) {
        Button button(variant, QStringLiteral("Press"), &window_);
        button.setSymbol(Symbol::plus);
        button.resize(button.sizeHint() - QSize(2 * button.padding() + 10, 0));
        const QColor background = button.grab().toImage().pixelColor(2, button.height() / 2);
        EXPECT_EQ(placeOf(Symbol::plus, symbolSize(button.font()), Qt::black,
                          window_.grab(button.geometry()).toImage())
                      .x(),
                  4)
            << background.name().toStdString();
    }
}

TEST_F(ButtonLabelTest, isMirrored) {
    button_.setSymbol(Symbol::plus);
    setFontSize(13);
    button_.setLayoutDirection(Qt::RightToLeft);
    EXPECT_EQ(placeOfSymbol().x(), button_.width() - 4 - symbolSide());
    const QImage shown = window_.grab(button_.geometry()).toImage();
    const QRect text(4, 0, textWidth(), button_.height());
    const QImage expected = paintedOn(Qt::white, button_.size(), [&](QPainter& painter) {
        painter.setFont(button_.font());
        painter.drawText(text, Qt::AlignRight | Qt::AlignVCenter, button_.text());
    });
    EXPECT_EQ(art(shown.copy(text)), art(expected.copy(text)));
}

TEST_F(ButtonLabelTest, isTheSymbolInTheMiddleWithoutAText) {
    button_.setText({});
    button_.setSymbol(Symbol::plus);
    button_.resize(61, 41);
    const QRect symbol = placeOfSymbol();
    EXPECT_LE(std::abs(symbol.x() - (60 - symbol.right())), 1);
    EXPECT_LE(std::abs(symbol.y() - (40 - symbol.bottom())), 1);
}

/// Checks the corners of a button in a white window.
class ButtonCornersTest : public ::testing::Test {
  protected:
    static void expectRadius(double radius, Button::Variant variant, Button::ControlSize size) {
        QWidget window;
        window.setPalette(QPalette(QColor(Qt::white)));
        Button button(variant, {}, &window);
        button.setControlSize(size);
        button.resize(60, 40);
        // Fills a plain button, too.
        button.setDown(true);
        const QImage shown = window.grab(button.geometry()).toImage();
        const QImage expected = paintedOn(Qt::white, button.size(), [&](QPainter& painter) {
            painter.setPen(Qt::NoPen);
            // No line covers it there.
            painter.setBrush(shown.pixelColor(10, 20));
            painter.drawPath(continuousRectangle(QRectF(0, 0, 60, 40), radius));
            if (variant == Button::Variant::bordered) {
                painter.setPen(separatorColor(window.palette()));
                painter.setBrush(Qt::NoBrush);
                painter.drawPath(continuousRectangle(QRectF(0.5, 0.5, 59, 39), radius));
            }
        });
        EXPECT_TRUE(haveEqualCorners(shown, expected, 15)) << radius;
    }
};

TEST_F(ButtonCornersTest, areRoundByVariantAndControlSize) {
    using Variant = Button::Variant;
    using Size = Button::ControlSize;
    expectRadius(6, Variant::plain, Size::regular);
    expectRadius(6, Variant::plain, Size::large);
    expectRadius(7, Variant::bordered, Size::regular);
    expectRadius(9, Variant::bordered, Size::large);
    expectRadius(7, Variant::prominent, Size::regular);
    expectRadius(9, Variant::prominent, Size::large);
}

TEST(ButtonHoverTest, isTrackedInStylesThatTrackItForNoButton) {
    const std::unique_ptr<QStyle> style(QStyleFactory::create(QStringLiteral("Windows")));
    ASSERT_NE(style, nullptr);
    Button button(Button::Variant::plain, QStringLiteral("Press"));
    button.setStyle(style.get());
    button.ensurePolished();
    EXPECT_TRUE(button.testAttribute(Qt::WA_Hover));
    button.setStyle(nullptr);
}

} // namespace
} // namespace kestrel
