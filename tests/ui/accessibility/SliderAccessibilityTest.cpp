#include "AccessibleViews.h"
#include "QualitySlider.h"
#include "Scenario.h"

#include <QAccessible>

#include <gtest/gtest.h>

namespace kestrel {
namespace {

class SliderAccessibilityTest : public ::testing::Test {
  protected:
    static void SetUpTestSuite() { installAccessibleViews(); }

    SliderAccessibilityTest() {
        EXPECT_TRUE(showActive(window_));
        slider_.setFocus();
    }

    QAccessibleInterface& accessible() { return *QAccessible::queryAccessibleInterface(&slider_); }

    QWidget window_;
    QualitySlider slider_{&window_};
};

TEST_F(SliderAccessibilityTest, hasItsValueInPercent) {
    slider_.showQuality(64.5);
    QAccessibleValueInterface* value = accessible().valueInterface();
    ASSERT_NE(value, nullptr);
    EXPECT_EQ(value->currentValue().toDouble(), 64.5);
    EXPECT_EQ(value->minimumValue().toDouble(), 30);
    EXPECT_EQ(value->maximumValue().toDouble(), 100);
    EXPECT_EQ(value->minimumStepSize().toDouble(), 1);
    EXPECT_EQ(utf8(accessible().text(QAccessible::Value)), "64%");
    EXPECT_EQ(accessible().role(), QAccessible::Slider);
}

TEST_F(SliderAccessibilityTest, canBeGivenTheFocus) {
    slider_.clearFocus();
    QAccessibleActionInterface* actions = accessible().actionInterface();
    ASSERT_NE(actions, nullptr);
    actions->doAction(QAccessibleActionInterface::setFocusAction());
    EXPECT_TRUE(slider_.hasFocus());
}

} // namespace
} // namespace kestrel
