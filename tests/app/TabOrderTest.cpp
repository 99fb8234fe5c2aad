#include "ContentView.h"
#include "MainWindowFixture.h"

#include <QPushButton>

namespace kestrel {
namespace {

using TabOrderTest = MainWindowFixture;

void pressTab(Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab, modifiers);
    settle();
}

TEST_F(TabOrderTest, endsAtTheCaptionButtonsWhateverTheContentsCreateLater) {
    QPushButton late(QStringLiteral("late"), window_.findChild<ContentView*>());
    late.show();
    late.setFocus();
    ASSERT_TRUE(late.hasFocus());
    for (CaptionButton* button : {&minimiseButton(), &maximiseButton(), &closeButton()}) {
        pressTab();
        EXPECT_TRUE(button->hasFocus()) << utf8(button->accessibleName());
    }
    for (CaptionButton* button : {&maximiseButton(), &minimiseButton()}) {
        pressTab(Qt::ShiftModifier);
        EXPECT_TRUE(button->hasFocus()) << utf8(button->accessibleName());
    }
    pressTab(Qt::ShiftModifier);
    EXPECT_TRUE(late.hasFocus());
}

} // namespace
} // namespace kestrel
