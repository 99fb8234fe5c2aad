#include "Button.h"

#include "MixedColor.h"
#include "PixelArt.h"
#include "Scenario.h"
#include "Timeout.h"

#include <QEnterEvent>
#include <QHBoxLayout>
#include <QImage>

#include <gtest/gtest.h>

#include <cstddef>
#include <functional>
#include <vector>

namespace kestrel {
namespace {

class ButtonTest : public ::testing::TestWithParam<Button::Variant> {
  protected:
    ButtonTest() : button_(GetParam(), QStringLiteral("Press")) {
        button_.setSymbol(Symbol::plus);
        button_.setPalette(QPalette(QColor(Qt::black), QColor(0xEE, 0xEE, 0xEE)));
        button_.show();
        EXPECT_TRUE(QTest::qWaitForWindowExposed(&button_, test::timeout));
        QTest::mouseMove(&button_, QPoint(-50, -50));
        settle();
    }

    QImage picture() { return button_.grab().toImage(); }

    /// Moves the pointer onto the button.
    void hover() {
        QEnterEvent enter(QPointF(5, 5), QPointF(5, 5), button_.mapToGlobal(QPointF(5, 5)));
        button_.setAttribute(Qt::WA_UnderMouse);
        QCoreApplication::sendEvent(&button_, &enter);
    }

    Button button_;
};

TEST_P(ButtonTest, looksDifferentInEachState) {
    const QImage idle = picture();
    hover();
    const QImage hovered = picture();
    EXPECT_NE(hovered, idle);
    button_.setDown(true);
    EXPECT_NE(picture(), hovered);
    EXPECT_NE(picture(), idle);
    button_.setDown(false);
    button_.setAttribute(Qt::WA_UnderMouse, false);
    EXPECT_EQ(picture(), idle);
    button_.setEnabled(false);
    EXPECT_NE(picture(), idle);
}

TEST_P(ButtonTest, showsNoHoverWhileDisabled) {
    button_.setEnabled(false);
    const QImage disabled = picture();
    hover();
    EXPECT_EQ(picture(), disabled);
}

TEST_P(ButtonTest, isPressedByTheMouseAndTheKeyboard) {
    int presses = 0;
    QObject::connect(&button_, &QPushButton::clicked, &button_, [&presses] { ++presses; });
    QTest::mouseClick(&button_, Qt::LeftButton);
    QTest::keyClick(&button_, Qt::Key_Space);
    QTest::keyClick(&button_, Qt::Key_Return);
    QTest::keyClick(&button_, Qt::Key_Enter);
    EXPECT_EQ(presses, 4);
    QTest::mouseClick(&button_, Qt::RightButton);
    EXPECT_EQ(presses, 4);
}

TEST_P(ButtonTest, hasRoomForItsLabelAtLeast) {
    const int defaultWidth = button_.sizeHint().width();
    button_.setMinimumLabelWidth(10);
    EXPECT_EQ(button_.sizeHint().width(), defaultWidth);
    button_.setMinimumLabelWidth(400);
    EXPECT_GT(button_.sizeHint().width(), 400);
}

TEST_P(ButtonTest, isHigherWhenLarge) {
    const int regularHeight = button_.sizeHint().height();
    button_.setControlSize(Button::ControlSize::large);
    if (GetParam() == Button::Variant::plain) {
        EXPECT_EQ(button_.sizeHint().height(), regularHeight);
    } else {
        EXPECT_GT(button_.sizeHint().height(), regularHeight);
    }
}

std::string nameOf(const ::testing::TestParamInfo<Button::Variant>& variant) {
    const char* const names[] = {"Plain", "Bordered", "Prominent"};
    return names[static_cast<int>(variant.param)];
}

INSTANTIATE_TEST_SUITE_P(Variants, ButtonTest,
                         ::testing::Values(Button::Variant::plain, Button::Variant::bordered,
                                           Button::Variant::prominent),
                         nameOf);

/// Checks the colours of a button in a window with this palette.
class ButtonColorsTest : public ::testing::Test {
  protected:
    enum class State { idle, hovered, pressed, disabled };

    /// The colour of the button beside its label.
    static QColor fill(Button::Variant variant, State state, const QPalette& palette) {
        QWidget window;
        window.setPalette(palette);
        Button button(variant, {}, &window);
        button.resize(60, 30);
        button.setAttribute(Qt::WA_UnderMouse, state == State::hovered || state == State::pressed);
        button.setDown(state == State::pressed);
        button.setEnabled(state != State::disabled);
        return window.grab(button.geometry()).toImage().pixelColor(10, 15);
    }

    static void expectFills(Button::Variant variant, const QPalette& palette,
                            const std::vector<QColor>& expected) {
        std::size_t index = 0;
        for (const State state : {State::idle, State::hovered, State::pressed, State::disabled}) {
            const QColor actual = fill(variant, state, palette);
            EXPECT_NEAR(actual.red(), expected[index].red(), 1) << "state " << index;
            EXPECT_NEAR(actual.green(), expected[index].green(), 1) << "state " << index;
            EXPECT_NEAR(actual.blue(), expected[index].blue(), 1) << "state " << index;
            ++index;
        }
    }

    const QColor lightWindow_{0xEE, 0xEE, 0xEE};
    const QColor darkWindow_{0x20, 0x20, 0x22};
    const QPalette light_{QColor(Qt::gray), lightWindow_};
    const QPalette dark_{QColor(Qt::gray), darkWindow_};
};

TEST_F(ButtonColorsTest, plainButtonsAreFilledOnlyWhileTheyAreUsed) {
    expectFills(Button::Variant::plain, light_,
                {lightWindow_, mixed(lightWindow_, Qt::black, 0.07),
                 mixed(lightWindow_, Qt::black, 0.14), lightWindow_});
    expectFills(Button::Variant::plain, dark_,
                {darkWindow_, mixed(darkWindow_, Qt::white, 0.07),
                 mixed(darkWindow_, Qt::white, 0.14), darkWindow_});
}

TEST_F(ButtonColorsTest, borderedButtonsAreLighterThanTheWindow) {
    const QColor light = mixed(lightWindow_, Qt::white, 0.8);
    expectFills(Button::Variant::bordered, light_,
                {light, mixed(light, Qt::black, 0.05), mixed(light, Qt::black, 0.1),
                 mixed(lightWindow_, Qt::black, 0.08)});
    expectFills(Button::Variant::bordered, dark_,
                {mixed(darkWindow_, Qt::white, 0.06), mixed(darkWindow_, Qt::white, 0.09),
                 mixed(darkWindow_, Qt::white, 0.02), mixed(darkWindow_, Qt::white, 0.08)});
}

TEST_F(ButtonColorsTest, prominentButtonsArePurple) {
    const QColor light(0x95, 0x40, 0xC8);
    expectFills(Button::Variant::prominent, light_,
                {light, mixed(light, Qt::white, 0.07), mixed(light, Qt::black, 0.18),
                 mixed(lightWindow_, Qt::black, 0.08)});
    const QColor dark(0x98, 0x43, 0xCE);
    expectFills(Button::Variant::prominent, dark_,
                {dark, mixed(dark, Qt::white, 0.07), mixed(dark, Qt::black, 0.18),
                 mixed(darkWindow_, Qt::white, 0.08)});
}

TEST_F(ButtonColorsTest, labelsAreWhiteOnPurpleAndPaleWhileDisabled) {
    const auto label = [this](Button::Variant variant, bool isEnabled) {
        QWidget window;
        window.setPalette(light_);
        Button button(variant, {}, &window);
        button.setSymbol(Symbol::folderFill);
        button.setEnabled(isEnabled);
        button.resize(60, 30);
        return window.grab(button.geometry()).toImage().pixelColor(30, 16);
    };
    EXPECT_EQ(label(Button::Variant::bordered, true), QColor(Qt::black));
    EXPECT_EQ(label(Button::Variant::prominent, true), QColor(Qt::white));
    const QColor disabled = mixed(mixed(lightWindow_, Qt::black, 0.08), Qt::black, 0.4);
    EXPECT_NEAR(label(Button::Variant::bordered, false).red(), disabled.red(), 2);
    EXPECT_NEAR(label(Button::Variant::prominent, false).red(), disabled.red(), 2);
}

TEST_F(ButtonColorsTest, borderedButtonsHaveALineAround) {
    QWidget window;
    window.setPalette(light_);
    Button button(Button::Variant::bordered, {}, &window);
    button.resize(60, 30);
    const QImage image = window.grab(button.geometry()).toImage();
    const QColor fill = mixed(lightWindow_, Qt::white, 0.8);
    const QColor line = mixed(fill, Qt::black, 0.2);
    for (const QPoint place : {QPoint(0, 15), QPoint(59, 15), QPoint(30, 0), QPoint(30, 29)}) {
        EXPECT_NEAR(image.pixelColor(place).red(), line.red(), 2);
    }
    EXPECT_EQ(image.pixelColor(1, 15).red(), fill.red());
    EXPECT_EQ(pixelArt(image.copy(0, 0, 9, 9), lightWindow_, line), R"(
.....++++
...+#+...
..+......
.+.......
.#.......
++.......
+........
+........
+........
)");
}

TEST_F(ButtonColorsTest, focusRingsArePurpleAndOnPurpleWhiteAndSmaller) {
    const auto ring = [this](Button::Variant variant) {
        QWidget window;
        window.setPalette(light_);
        auto* button = new Button(variant, {}, &window);
        button->resize(60, 30);
        EXPECT_TRUE(showActive(window));
        button->setFocus(Qt::TabFocusReason);
        QTest::keyClick(button, Qt::Key_Shift);
        QTest::mouseMove(&window, QPoint(0, 100));
        settle();
        return window.grab(button->geometry()).toImage().copy(0, 13, 9, 1);
    };
    const QColor purple(0x95, 0x40, 0xC8);
    EXPECT_EQ(pixelArt(ring(Button::Variant::plain), lightWindow_, purple), "\n##.......\n");
    EXPECT_EQ(pixelArt(ring(Button::Variant::prominent), purple, Qt::white), "\n..##.....\n");
}

TEST(ButtonSizeTest, dependsOnItsVariantAndControlSize) {
    using Size = Button::ControlSize;
    const auto minimum = [](Button::Variant variant, Size size) {
        Button button(variant);
        button.setControlSize(size);
        return button.sizeHint();
    };
    EXPECT_EQ(minimum(Button::Variant::plain, Size::regular), QSize(2 * 4, 24));
    EXPECT_EQ(minimum(Button::Variant::plain, Size::large), QSize(2 * 4, 24));
    EXPECT_EQ(minimum(Button::Variant::bordered, Size::regular), QSize(2 * 13, 30));
    EXPECT_EQ(minimum(Button::Variant::bordered, Size::large), QSize(2 * 16, 36));
    EXPECT_EQ(minimum(Button::Variant::prominent, Size::regular), QSize(2 * 13, 30));
    EXPECT_EQ(minimum(Button::Variant::prominent, Size::large), QSize(2 * 16, 36));
}

TEST(ButtonSizeTest, hasRoomForSymbolTextAndTheGapBetweenThem) {
    Button button(Button::Variant::plain, QStringLiteral("Press"));
    const int text = button.fontMetrics().horizontalAdvance(button.text()) + 1;
    EXPECT_EQ(button.sizeHint().width(), text + 2 * 4);
    button.setSymbol(Symbol::plus);
    const int symbol = symbolSize(button.font());
    EXPECT_EQ(button.sizeHint().width(), symbol + 6 + text + 2 * 4);
    button.setText({});
    EXPECT_EQ(button.sizeHint().width(), symbol + 2 * 4);
}

TEST(ButtonSizeTest, growsWithItsFontAndKeepsItsPadding) {
    Button button(Button::Variant::bordered, QStringLiteral("Press"));
    QFont font = button.font();
    font.setPixelSize(40);
    button.setFont(font);
    EXPECT_EQ(button.sizeHint().height(), lineHeight(font) + 2 * 6);
    button.setControlSize(Button::ControlSize::large);
    EXPECT_EQ(button.sizeHint().height(), lineHeight(font) + 2 * 9);
}

TEST(ButtonSizeTest, followsEverySettingInItsLayout) {
    QWidget window;
    QHBoxLayout row(&window);
    Button button(Button::Variant::bordered, QStringLiteral("Press"), &window);
    row.setContentsMargins(0, 0, 0, 0);
    row.addWidget(&button);
    window.show();
    settle();
    ASSERT_EQ(row.sizeHint(), button.sizeHint());
    const auto expectToFollow = [&](const char* setting) {
        EXPECT_EQ(row.sizeHint(), button.sizeHint()) << setting;
    };
    button.setSymbol(Symbol::plus);
    expectToFollow("symbol");
    button.setMinimumLabelWidth(300);
    expectToFollow("minimum width");
    button.setTextFont({TextStyle::title2, QFont::Bold});
    expectToFollow("font");
    button.setControlSize(Button::ControlSize::large);
    expectToFollow("control size");
}

/// Counts its paint events.
class PaintedButton : public Button {
  public:
    using Button::Button;

    int paints = 0;

  protected:
    void paintEvent(QPaintEvent* event) override {
        ++paints;
        Button::paintEvent(event);
    }
};

TEST(ButtonPaintTest, isRepaintedWithANewSymbolOrColor) {
    PaintedButton button(Button::Variant::plain);
    button.setFixedSize(60, 30);
    ASSERT_TRUE(showActive(button));
    const auto isRepainted = [&button](const std::function<void()>& change) {
        settle();
        button.paints = 0;
        change();
        return test::runUntil([&button] { return button.paints > 0; });
    };
    EXPECT_TRUE(isRepainted([&button] { button.setSymbol(Symbol::plus); }));
    EXPECT_TRUE(isRepainted([&button] { button.setThemeColor(ThemeColor::Name::red); }));
}

TEST(ProminentButtonTest, isFilledWithPurple) {
    Button button(Button::Variant::prominent);
    button.setPalette(QPalette(QColor(Qt::black), QColor(0xEE, 0xEE, 0xEE)));
    button.resize(60, 30);
    EXPECT_EQ(button.grab().toImage().pixelColor(8, 15), QColor(0x95, 0x40, 0xC8));
}

TEST(DestructiveButtonTest, isLabelledInRed) {
    Button button(Button::Variant::bordered);
    button.setSymbol(Symbol::xmarkCircleFill);
    button.markDestructive();
    button.setPalette(QPalette(QColor(Qt::black), QColor(0xEE, 0xEE, 0xEE)));
    button.resize(60, 30);
    const QImage image = button.grab().toImage();
    EXPECT_EQ(image.pixelColor(30, 15 - symbolSize(button.font()) / 3), QColor(0xC0, 0x24, 0x1C));
}

} // namespace
} // namespace kestrel
