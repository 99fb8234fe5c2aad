#include "KeyboardFocus.h"

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

// In a process of its own, as other tests press keys.
TEST(KeyboardFocusDeathTest, isNotShownBeforeTheFirstKey) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_EXIT(pressTheFirstKey(), ::testing::ExitedWithCode(0), "");
}

} // namespace
} // namespace kestrel
