#include "KeyboardFocus.h"

#include "Button.h"
#include "Scenario.h"

#include <gtest/gtest.h>

#include <cstdlib>

namespace kestrel {
namespace {

/// Exits with 0 iff a widget shows its focus from the first key on.
[[noreturn]] void pressTheFirstKey() {
    QWidget widget;
    widget.setFocusPolicy(Qt::StrongFocus);
    if (!showActive(widget)) {
        std::_Exit(2);
    }
    widget.setFocus();
    if (!widget.hasFocus() || KeyboardFocus::isShownOn(widget)) {
        std::_Exit(3);
    }
    QTest::keyClick(&widget, Qt::Key_Shift);
    std::_Exit(KeyboardFocus::isShownOn(widget) ? 0 : 4);
}

/// Exits with 0 iff a button shows its focus after a key that came before its first frame.
[[noreturn]] void pressAKeyBeforeTheFirstFrame() {
    Button button(Button::Variant::plain, QStringLiteral("Press"));
    QTest::keyClick(&button, Qt::Key_Shift);
    if (!showActive(button)) {
        std::_Exit(2);
    }
    button.setFocus();
    std::_Exit(KeyboardFocus::isShownOn(button) ? 0 : 3);
}

// In a process of its own, as other tests press keys.
TEST(KeyboardFocusDeathTest, isNotShownBeforeTheFirstKey) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_EXIT(pressTheFirstKey(), ::testing::ExitedWithCode(0), "");
}

TEST(KeyboardFocusDeathTest, isShownOnAButtonAfterAKeyBeforeItsFirstFrame) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_EXIT(pressAKeyBeforeTheFirstFrame(), ::testing::ExitedWithCode(0), "");
}

} // namespace
} // namespace kestrel
