#include "JobListFixture.h"

#include <gmock/gmock.h>

namespace kestrel {
namespace {

using ::testing::ElementsAre;

using JobListKeysTest = JobListFixture;

TEST_F(JobListKeysTest, isOneTabStop) {
    scenario_.addMany(3);
    ASSERT_TRUE(before_.hasFocus());
    type(Qt::Key_Tab);
    EXPECT_EQ(focusedName(), "0.opus");
    type(Qt::Key_Tab);
    EXPECT_TRUE(after_.hasFocus());
    type(Qt::Key_Tab, Qt::ShiftModifier);
    EXPECT_EQ(focusedName(), "0.opus");
    type(Qt::Key_Tab, Qt::ShiftModifier);
    EXPECT_TRUE(before_.hasFocus());
}

TEST_F(JobListKeysTest, isLeftByTabFromARemoveButtonToo) {
    scenario_.addMany(3);
    type(Qt::Key_Tab);
    type(Qt::Key_Right);
    ASSERT_TRUE(removeButtonOf("0.opus")->hasFocus());
    type(Qt::Key_Tab);
    EXPECT_TRUE(after_.hasFocus());
    type(Qt::Key_Tab, Qt::ShiftModifier);
    type(Qt::Key_Right);
    ASSERT_TRUE(removeButtonOf("0.opus")->hasFocus());
    type(Qt::Key_Tab, Qt::ShiftModifier);
    EXPECT_TRUE(before_.hasFocus());
}

TEST_F(JobListKeysTest, returnsToTheLastFocusedRow) {
    scenario_.addMany(100);
    QTest::mouseClick(rowOf("3.opus"), Qt::LeftButton, {}, QPoint(100, 20));
    EXPECT_EQ(focusedName(), "3.opus");
    type(Qt::Key_Tab);
    ASSERT_TRUE(after_.hasFocus());
    bar()->setValue(bar()->maximum());
    type(Qt::Key_Tab, Qt::ShiftModifier);
    EXPECT_EQ(focusedName(), "3.opus");
    EXPECT_TRUE(isFullyVisible(focusedRow()));
}

TEST_F(JobListKeysTest, startsAtTheFirstFullyVisibleRow) {
    scenario_.addMany(100);
    bar()->setValue(bar()->maximum() / 2 + 7);
    const int value = bar()->value();
    const std::string name = texts("name")[1];
    type(Qt::Key_Tab);
    EXPECT_EQ(focusedName(), name);
    EXPECT_EQ(bar()->value(), value);
}

TEST_F(JobListKeysTest, startsAtTheSecondRowIfTheFirstIsClipped) {
    scenario_.addMany(100);
    bar()->setValue(rows().front()->height() / 2);
    type(Qt::Key_Tab);
    EXPECT_EQ(focusedName(), "1.opus");
}

TEST_F(JobListKeysTest, startsAtARowThatBeginsAtTheEdge) {
    scenario_.addMany(100);
    bar()->setValue(rows()[3]->y());
    ASSERT_EQ(rows().front()->y(), 0);
    type(Qt::Key_Tab);
    EXPECT_EQ(focusedName(), "3.opus");
}

TEST_F(JobListKeysTest, movesFromRowToRowByKeys) {
    scenario_.addMany(100);
    type(Qt::Key_Tab);
    type(Qt::Key_Up);
    EXPECT_EQ(focusedName(), "0.opus");
    type(Qt::Key_Down);
    type(Qt::Key_Down);
    EXPECT_EQ(focusedName(), "2.opus");
    type(Qt::Key_Up);
    EXPECT_EQ(focusedName(), "1.opus");
    type(Qt::Key_End);
    EXPECT_EQ(focusedName(), "99.opus");
    EXPECT_EQ(bar()->value(), bar()->maximum());
    type(Qt::Key_Down);
    EXPECT_EQ(focusedName(), "99.opus");
    type(Qt::Key_Home);
    EXPECT_EQ(focusedName(), "0.opus");
    EXPECT_EQ(bar()->value(), 0);
}

TEST_F(JobListKeysTest, scrollsEveryFocusedRowIntoView) {
    scenario_.addMany(100);
    type(Qt::Key_Tab);
    for (int number = 1; number < 100; ++number) {
        type(Qt::Key_Down);
        ASSERT_EQ(focusedName(), std::to_string(number) + ".opus");
        ASSERT_TRUE(isFullyVisible(focusedRow())) << number;
    }
    for (int number = 98; number >= 0; --number) {
        type(Qt::Key_Up);
        ASSERT_EQ(focusedName(), std::to_string(number) + ".opus");
        ASSERT_TRUE(isFullyVisible(focusedRow())) << number;
    }
}

TEST_F(JobListKeysTest, movesByPages) {
    scenario_.addMany(100);
    type(Qt::Key_Tab);
    const int perPage = area()->viewport()->height() / rows().front()->height();
    type(Qt::Key_PageDown);
    EXPECT_EQ(focusedName(), std::to_string(perPage) + ".opus");
    EXPECT_TRUE(isFullyVisible(focusedRow()));
    type(Qt::Key_PageDown);
    EXPECT_EQ(focusedName(), std::to_string(2 * perPage) + ".opus");
    type(Qt::Key_End);
    type(Qt::Key_PageDown);
    EXPECT_EQ(focusedName(), "99.opus");
    type(Qt::Key_Home);
    type(Qt::Key_PageDown);
    type(Qt::Key_PageUp);
    EXPECT_EQ(focusedName(), "0.opus");
    EXPECT_EQ(bar()->value(), 0);
}

TEST_F(JobListKeysTest, entersAtTheSecondOfTwoVisibleRowsIfTheFirstIsCut) {
    scenario_.addMany(100);
    const int rowHeight = rows().front()->height();
    list_.setFixedHeight(list_.height() - area()->viewport()->height() + rowHeight);
    settle();
    ASSERT_EQ(area()->viewport()->height(), rowHeight);
    bar()->setValue(rowHeight / 2);
    type(Qt::Key_Tab);
    EXPECT_EQ(focusedName(), "1.opus");
}

TEST_F(JobListKeysTest, movesByARowIfAPageHasRoomForNone) {
    scenario_.addMany(100);
    type(Qt::Key_Tab);
    list_.setFixedHeight(rows().front()->height() / 2);
    settle();
    ASSERT_LT(area()->viewport()->height(), rows().front()->height());
    for (const char* name : {"1.opus", "2.opus", "3.opus"}) {
        type(Qt::Key_PageDown);
        EXPECT_EQ(focusedName(), name);
    }
    for (const char* name : {"2.opus", "1.opus", "0.opus", "0.opus"}) {
        type(Qt::Key_PageUp);
        EXPECT_EQ(focusedName(), name);
    }
}

TEST_F(JobListKeysTest, movesOverRowsThatAreMeasuredLower) {
    for (int number = 0; number < 60; ++number) {
        scenario_.failWith(std::to_string(number) + ".opus", "short");
    }
    scenario_.addMany(60);
    ASSERT_TRUE(scenario_.convertAll());
    before_.setFocus();
    type(Qt::Key_Tab);
    for (const Qt::Key key : {Qt::Key_End, Qt::Key_PageUp, Qt::Key_PageUp, Qt::Key_Up,
                              Qt::Key_PageDown, Qt::Key_Home, Qt::Key_PageDown}) {
        type(key);
        ASSERT_NE(focusedRow(), nullptr);
        EXPECT_TRUE(isFullyVisible(focusedRow())) << key;
    }
}

TEST_F(JobListKeysTest, removesTheRowWithTheFocusByDelete) {
    scenario_.add({"a.opus", "b.opus", "c.opus"});
    type(Qt::Key_Tab);
    type(Qt::Key_Down);
    type(Qt::Key_Delete);
    EXPECT_THAT(texts("name"), ElementsAre("a.opus", "c.opus"));
    EXPECT_EQ(focusedName(), "c.opus");
    type(Qt::Key_Delete);
    EXPECT_EQ(focusedName(), "a.opus");
    type(Qt::Key_Delete);
    EXPECT_TRUE(scenario_.model->jobs().empty());
}

TEST_F(JobListKeysTest, keepsARowWithoutARemoveButton) {
    scenario_.add({"a.opus"});
    ASSERT_TRUE(scenario_.convertAll());
    before_.setFocus();
    type(Qt::Key_Tab);
    type(Qt::Key_Right);
    EXPECT_EQ(focusedName(), "a.opus");
    type(Qt::Key_Delete);
    EXPECT_EQ(scenario_.model->jobs().size(), 1U);
}

TEST_F(JobListKeysTest, movesIntoTheRemoveButtonAndBack) {
    scenario_.add({"a.opus", "b.opus"});
    type(Qt::Key_Tab);
    for (const Qt::Key back : {Qt::Key_Left, Qt::Key_Escape}) {
        type(Qt::Key_Right);
        EXPECT_TRUE(removeButtonOf("a.opus")->hasFocus());
        type(back);
        EXPECT_EQ(focusedName(), "a.opus");
    }
    type(Qt::Key_Right);
    type(Qt::Key_Down);
    EXPECT_EQ(focusedName(), "b.opus");
}

TEST_F(JobListKeysTest, movesIntoTheRemoveButtonByLeftInARightToLeftLayout) {
    window_.setLayoutDirection(Qt::RightToLeft);
    scenario_.add({"a.opus"});
    type(Qt::Key_Tab);
    type(Qt::Key_Right);
    EXPECT_EQ(focusedName(), "a.opus");
    type(Qt::Key_Left);
    EXPECT_TRUE(removeButtonOf("a.opus")->hasFocus());
    type(Qt::Key_Right);
    EXPECT_EQ(focusedName(), "a.opus");
}

TEST_F(JobListKeysTest, pressesTheRemoveButtonByKeysAndStaysAtTheButtons) {
    scenario_.add({"a.opus", "b.opus", "c.opus", "d.opus"});
    type(Qt::Key_Tab);
    type(Qt::Key_Down);
    type(Qt::Key_Right);
    type(Qt::Key_Space);
    ASSERT_THAT(texts("name"), ElementsAre("a.opus", "c.opus", "d.opus"));
    EXPECT_TRUE(removeButtonOf("c.opus")->hasFocus());
    type(Qt::Key_Return);
    ASSERT_THAT(texts("name"), ElementsAre("a.opus", "d.opus"));
    EXPECT_TRUE(removeButtonOf("d.opus")->hasFocus());
    type(Qt::Key_Enter);
    EXPECT_TRUE(removeButtonOf("a.opus")->hasFocus());
}

TEST_F(JobListKeysTest, leavesTheFocusToTheNextRowWhenTheMouseRemovesOne) {
    scenario_.add({"a.opus", "b.opus", "c.opus"});
    QTest::mouseClick(removeButtonOf("b.opus"), Qt::LeftButton);
    settle();
    ASSERT_THAT(texts("name"), ElementsAre("a.opus", "c.opus"));
    EXPECT_EQ(focusedName(), "c.opus");
}

TEST_F(JobListKeysTest, keepsTheFocusedRowWhenItIsScrolledOutOfView) {
    scenario_.addMany(100);
    type(Qt::Key_Tab);
    type(Qt::Key_Down);
    JobRow* const row = focusedRow();
    bar()->setValue(bar()->maximum());
    settle();
    EXPECT_EQ(focusedRow(), row);
    EXPECT_EQ(focusedName(), "1.opus");
    EXPECT_TRUE(row->visibleRegion().isEmpty());
    bar()->setValue(0);
    settle();
    EXPECT_EQ(rowOf("1.opus"), row);
    EXPECT_TRUE(row->hasFocus());
}

TEST_F(JobListKeysTest, scrollsBackToTheFocusWhenAKeyIsTyped) {
    scenario_.addMany(100);
    type(Qt::Key_Tab);
    type(Qt::Key_Down);
    bar()->setValue(bar()->maximum());
    type(Qt::Key_Right);
    EXPECT_TRUE(removeButtonOf("1.opus")->hasFocus());
    EXPECT_TRUE(isFullyVisible(rowOf("1.opus")));
    bar()->setValue(bar()->maximum());
    type(Qt::Key_X);
    EXPECT_TRUE(isFullyVisible(rowOf("1.opus")));
    bar()->setValue(bar()->maximum());
    type(Qt::Key_Down);
    EXPECT_EQ(focusedName(), "2.opus");
    EXPECT_TRUE(isFullyVisible(focusedRow()));
}

TEST_F(JobListKeysTest, keepsTheFocusOnItsRowWhileOthersAreRemoved) {
    scenario_.addMany(100);
    type(Qt::Key_Tab);
    type(Qt::Key_PageDown);
    const std::string name = focusedName();
    JobRow* const row = focusedRow();
    for (int count = 0; count < 5; ++count) {
        scenario_.model->remove(scenario_.model->jobs().front());
    }
    settle();
    EXPECT_EQ(focusedRow(), row);
    EXPECT_EQ(focusedName(), name);
    type(Qt::Key_Home);
    EXPECT_EQ(focusedName(), "5.opus");
}

TEST_F(JobListKeysTest, keepsTheFocusOnItsRowThoughTheListScrollsBeforeItRefreshes) {
    scenario_.addMany(100);
    QTest::mouseClick(rowOf("3.opus"), Qt::LeftButton, {}, QPoint(100, 20));
    scenario_.model->remove(scenario_.model->jobs().front());
    scenario_.model->add({FileURL("/no-such-folder/100.opus")});
    bar()->setValue(bar()->value() + 1);
    EXPECT_EQ(focusedName(), "3.opus");
    scenario_.model->remove(scenario_.model->jobs().front());
    scenario_.model->add({FileURL("/no-such-folder/101.opus")});
    type(Qt::Key_Down);
    EXPECT_EQ(focusedName(), "4.opus");
}

TEST_F(JobListKeysTest, movesTheFocusToTheRowWhenItsButtonGoesAway) {
    scenario_.holdBack("a.opus", 0.5);
    scenario_.add({"a.opus", "b.opus"});
    type(Qt::Key_Tab);
    type(Qt::Key_Right);
    ASSERT_TRUE(removeButtonOf("a.opus")->hasFocus());
    scenario_.start();
    ASSERT_FALSE(removeButtonOf("a.opus")->isVisible());
    EXPECT_EQ(focusedName(), "a.opus");
}

TEST_F(JobListKeysTest, doesNotEndAPressInTheRemovalOfAnotherJob) {
    scenario_.addMany(100);
    QPushButton* button = removeButtonOf("1.opus");
    QTest::mousePress(button, Qt::LeftButton);
    before_.setFocus();
    for (int count = 0; count < 50; ++count) {
        scenario_.model->remove(scenario_.model->jobs().front());
    }
    settle();
    ASSERT_TRUE(button->isVisible());
    QTest::mouseRelease(button, Qt::LeftButton);
    EXPECT_EQ(scenario_.model->jobs().size(), 50U);
}

TEST_F(JobListKeysTest, drawsTheFocusRingForKeyboardFocusOnly) {
    scenario_.add({"a.opus", "b.opus"});
    // A pixel of the focus ring at the row's left edge.
    const auto edge = [this](const char* name) {
        const JobRow* row = rowOf(name);
        return list_.grab().toImage().pixelColor(row->mapTo(&list_, QPoint(0, row->height() / 2)));
    };
    const QColor plain = edge("b.opus");
    QTest::mouseClick(rowOf("a.opus"), Qt::LeftButton, {}, QPoint(100, 20));
    EXPECT_EQ(edge("a.opus"), plain);
    type(Qt::Key_Down);
    EXPECT_NE(edge("b.opus"), plain);
    EXPECT_EQ(edge("a.opus"), plain);
}

} // namespace
} // namespace kestrel
