#include "Button.h"

#include "Patience.h"
#include "Scenario.h"

#include <QEnterEvent>
#include <QImage>

#include <gtest/gtest.h>

namespace kestrel {
namespace {

class ButtonTest : public ::testing::TestWithParam<Button::Look> {
  protected:
    ButtonTest() : button_(GetParam(), QStringLiteral("Press")) {
        button_.setSymbol(Symbol::plus);
        button_.setPalette(QPalette(QColor(Qt::black), QColor(0xEE, 0xEE, 0xEE)));
        button_.show();
        EXPECT_TRUE(QTest::qWaitForWindowExposed(&button_, test::patience));
        QTest::mouseMove(&button_, QPoint(-50, -50));
        settle();
    }

    QImage look() { return button_.grab().toImage(); }

    /// Moves the pointer onto the button.
    void hover() {
        QEnterEvent enter(QPointF(5, 5), QPointF(5, 5), button_.mapToGlobal(QPointF(5, 5)));
        button_.setAttribute(Qt::WA_UnderMouse);
        QCoreApplication::sendEvent(&button_, &enter);
    }

    Button button_;
};

TEST_P(ButtonTest, looksDifferentInEachState) {
    const QImage idle = look();
    hover();
    const QImage hovered = look();
    EXPECT_NE(hovered, idle);
    button_.setDown(true);
    EXPECT_NE(look(), hovered);
    EXPECT_NE(look(), idle);
    button_.setDown(false);
    button_.setAttribute(Qt::WA_UnderMouse, false);
    EXPECT_EQ(look(), idle);
    button_.setEnabled(false);
    EXPECT_NE(look(), idle);
}

TEST_P(ButtonTest, doesNotAnswerToThePointerWhileDisabled) {
    button_.setEnabled(false);
    const QImage disabled = look();
    hover();
    EXPECT_EQ(look(), disabled);
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
    const int usual = button_.sizeHint().width();
    button_.setMinimumLabelWidth(10);
    EXPECT_EQ(button_.sizeHint().width(), usual);
    button_.setMinimumLabelWidth(400);
    EXPECT_GT(button_.sizeHint().width(), 400);
}

TEST_P(ButtonTest, isHigherWhenLarge) {
    const int usual = button_.sizeHint().height();
    button_.setControlSize(Button::ControlSize::large);
    if (GetParam() == Button::Look::plain) {
        EXPECT_EQ(button_.sizeHint().height(), usual);
    } else {
        EXPECT_GT(button_.sizeHint().height(), usual);
    }
}

std::string nameOf(const ::testing::TestParamInfo<Button::Look>& look) {
    const char* const names[] = {"Plain", "Bordered", "Prominent"};
    return names[static_cast<int>(look.param)];
}

INSTANTIATE_TEST_SUITE_P(Looks, ButtonTest,
                         ::testing::Values(Button::Look::plain, Button::Look::bordered,
                                           Button::Look::prominent),
                         nameOf);

TEST(ProminentButtonTest, isFilledWithPurple) {
    Button button(Button::Look::prominent);
    button.setPalette(QPalette(QColor(Qt::black), QColor(0xEE, 0xEE, 0xEE)));
    button.resize(60, 30);
    EXPECT_EQ(button.grab().toImage().pixelColor(8, 15), QColor(0xAF, 0x52, 0xDE));
}

TEST(DestructiveButtonTest, isLabelledInRed) {
    Button button(Button::Look::bordered);
    button.setSymbol(Symbol::xmarkCircleFill);
    button.markDestructive();
    button.setPalette(QPalette(QColor(Qt::black), QColor(0xEE, 0xEE, 0xEE)));
    button.resize(60, 30);
    const QImage image = button.grab().toImage();
    EXPECT_EQ(image.pixelColor(30, 15 - symbolSize(button.font()) / 3), QColor(0xFF, 0x3B, 0x30));
}

} // namespace
} // namespace kestrel
