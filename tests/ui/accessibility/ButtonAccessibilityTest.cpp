#include "AccessibleViews.h"
#include "Alert.h"
#include "Button.h"

#include <QAccessible>
#include <QWidget>

#include <gtest/gtest.h>

namespace kestrel {
namespace {

TEST(ButtonAccessibilityTest, tellsTheDefaultButtonOfADialogFromOthers) {
    installAccessibleViews();
    QWidget window;
    const auto isDefault = [](Button& button) {
        return QAccessible::queryAccessibleInterface(&button)->state().defaultButton == 1;
    };
    const Alert alert(&window);
    EXPECT_TRUE(isDefault(*alert.findChild<Button*>()));
    Button other(Button::Variant::bordered, QStringLiteral("Folder"), &window);
    EXPECT_FALSE(isDefault(other));
}

} // namespace
} // namespace kestrel
