#include "Button.h"
#include "JobListFixture.h"
#include "RunUntil.h"

#include <QCursor>

namespace kestrel {
namespace {

using JobListMouseTest = JobListFixture;

TEST_F(JobListMouseTest, staysWhereItIsWhenTheScrollBarIsPressed) {
    scenario_.addMany(100);
    type(Qt::Key_Tab);
    for (const bool hasFocus : {true, false}) {
        if (!hasFocus) {
            after_.setFocus();
        }
        bar()->setValue(bar()->maximum() / 2);
        const int value = bar()->value();
        // On its handle.
        QTest::mousePress(bar(), Qt::LeftButton, {}, bar()->rect().center());
        EXPECT_EQ(bar()->value(), value);
        EXPECT_TRUE(bar()->isSliderDown());
        QTest::mouseRelease(bar(), Qt::LeftButton, {}, bar()->rect().center());
        settle();
        EXPECT_EQ(bar()->value(), value);
        EXPECT_EQ(focusedName(), "0.opus");
    }
}

TEST_F(JobListMouseTest, staysWhereItIsWhenTheMarginIsPressed) {
    scenario_.addMany(100);
    type(Qt::Key_Tab);
    bar()->setValue(bar()->maximum() / 2);
    const int value = bar()->value();
    QTest::mouseClick(area()->viewport(), Qt::LeftButton, {}, QPoint(3, 200));
    EXPECT_EQ(bar()->value(), value);
    type(Qt::Key_Down);
    EXPECT_EQ(focusedName(), "1.opus");
    EXPECT_TRUE(isFullyVisible(focusedRow()));
}

TEST_F(JobListMouseTest, clearsTheHoverStateOfAButtonThatScrollsFromUnderTheMouse) {
    scenario_.addMany(100);
    const QPoint before = QCursor::pos();
    Button* const button = rowOf("2.opus")->removeButton();
    QCursor::setPos(button->mapToGlobal(button->rect().center()));
    ASSERT_TRUE(test::runUntil([button] { return button->underMouse(); }));
    bar()->setValue(bar()->value() + 40);
    EXPECT_FALSE(button->underMouse());
    QCursor::setPos(before);
}

} // namespace
} // namespace kestrel
