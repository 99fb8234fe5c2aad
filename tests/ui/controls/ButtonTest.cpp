#include "Button.h"

#include "Scenario.h"
#include "Timeout.h"

#include <QEnterEvent>
#include <QImage>

#include <gtest/gtest.h>

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

TEST(ProminentButtonTest, isFilledWithPurple) {
    Button button(Button::Variant::prominent);
    button.setPalette(QPalette(QColor(Qt::black), QColor(0xEE, 0xEE, 0xEE)));
    button.resize(60, 30);
    EXPECT_EQ(button.grab().toImage().pixelColor(8, 15), QColor(0xAF, 0x52, 0xDE));
}

TEST(DestructiveButtonTest, isLabelledInRed) {
    Button button(Button::Variant::bordered);
    button.setSymbol(Symbol::xmarkCircleFill);
    button.markDestructive();
    button.setPalette(QPalette(QColor(Qt::black), QColor(0xEE, 0xEE, 0xEE)));
    button.resize(60, 30);
    const QImage image = button.grab().toImage();
    EXPECT_EQ(image.pixelColor(30, 15 - symbolSize(button.font()) / 3), QColor(0xFF, 0x3B, 0x30));
}

} // namespace
} // namespace kestrel
