#include "JobListFixture.h"
#include "RunUntil.h"

#include <QAccessible>

#include <gmock/gmock.h>

namespace kestrel {
namespace {

using ::testing::ElementsAre;

/// The list's accessible interfaces.
class JobListAccessibilityTest : public JobListFixture {
  protected:
    QAccessibleInterface* list() const {
        return QAccessible::queryAccessibleInterface(area()->viewport());
    }

    std::vector<std::string> names() const { return texts(QAccessible::Name); }

    std::vector<std::string> texts(QAccessible::Text kind) const {
        std::vector<std::string> texts;
        texts.reserve(static_cast<std::size_t>(list()->childCount()));
        for (int index = 0; index < list()->childCount(); ++index) {
            texts.push_back(utf8(list()->child(index)->text(kind)));
        }
        return texts;
    }
};

TEST_F(JobListAccessibilityTest, isAListOfItsRows) {
    scenario_.add({"a.opus", "b.opus"});
    EXPECT_EQ(list()->role(), QAccessible::List);
    EXPECT_EQ(utf8(list()->text(QAccessible::Name)), "Files");
    EXPECT_THAT(names(), ElementsAre("a.opus, in Album, Ready", "b.opus, in Album, Ready"));
    EXPECT_THAT(texts(QAccessible::Description), ElementsAre("1 of 2", "2 of 2"));
    QAccessibleInterface* row = list()->child(1);
    EXPECT_EQ(row->role(), QAccessible::ListItem);
    EXPECT_EQ(row->parent(), list());
    EXPECT_EQ(list()->indexOfChild(row), 1);
    EXPECT_EQ(list()->child(2), nullptr);
    EXPECT_EQ(list()->child(-1), nullptr);
    EXPECT_EQ(list()->indexOfChild(list()), -1);
    const QPoint center = row->rect().center();
    EXPECT_EQ(list()->childAt(center.x(), center.y()), row);
    EXPECT_EQ(list()->childAt(-1, -1), nullptr);
}

TEST_F(JobListAccessibilityTest, consistsOfItsRowsAndItsScrollBar) {
    scenario_.add({"a.opus"});
    QAccessibleInterface* whole = QAccessible::queryAccessibleInterface(area());
    EXPECT_EQ(whole->child(0), list());
    EXPECT_EQ(list()->parent(), whole);
    ASSERT_EQ(whole->childCount(), 2);
    QAccessibleInterface* side = whole->child(1);
    EXPECT_EQ(side->child(0), QAccessible::queryAccessibleInterface(bar()));
    EXPECT_EQ(side->parent(), whole);
    EXPECT_EQ(whole->indexOfChild(list()), 0);
    EXPECT_EQ(whole->indexOfChild(side), 1);
    EXPECT_EQ(whole->indexOfChild(side->child(0)), -1);
    const QPoint center = list()->rect().center();
    EXPECT_EQ(whole->childAt(center.x(), center.y()), list());
}

// Clients query the child count first; a child may be gone by the time they query it.
TEST_F(JobListAccessibilityTest, returnsNullForAChildThatIsGone) {
    scenario_.add({"a.opus"});
    QAccessibleInterface* whole = QAccessible::queryAccessibleInterface(area());
    const int before = whole->childCount();
    list_.hide();
    for (const int index : {whole->childCount(), before - 1, before, 1000, -1}) {
        EXPECT_EQ(whole->child(index), nullptr) << index;
    }
    EXPECT_EQ(whole->child(0), list());
}

TEST_F(JobListAccessibilityTest, exposesNoSpareRow) {
    scenario_.addMany(100);
    bar()->setValue(bar()->maximum());
    bar()->setValue(200);
    while (scenario_.model->jobs().size() > 2) {
        scenario_.model->remove(scenario_.model->jobs().back());
    }
    settle();
    ASSERT_GT(list_.findChildren<JobRow*>().size(), 2);
    EXPECT_THAT(texts(QAccessible::Description), ElementsAre("1 of 2", "2 of 2"));
    for (JobRow* row : list_.findChildren<JobRow*>()) {
        const int index = list()->indexOfChild(QAccessible::queryAccessibleInterface(row));
        EXPECT_EQ(index >= 0, row->isVisible());
    }
}

TEST_F(JobListAccessibilityTest, staysSmallAndInOrderForAHundredThousandJobs) {
    scenario_.addMany(100'000);
    type(Qt::Key_Tab);
    bar()->setValue(bar()->maximum() / 2);
    bar()->setValue(bar()->value() - 300);
    settle();
    EXPECT_LT(list()->childCount(), 20);
    ASSERT_GE(list()->childCount(), 6);
    // The focused row is scrolled out of view, and first.
    EXPECT_EQ(texts(QAccessible::Description).front(), "1 of 100000");
    EXPECT_TRUE(list()->child(0)->state().focused);
    for (int index = 2; index < list()->childCount(); ++index) {
        EXPECT_LT(list()->child(index - 1)->rect().top(), list()->child(index)->rect().top());
    }
}

TEST_F(JobListAccessibilityTest, updatesPositionsWhenARowIsRemoved) {
    scenario_.add({"a.opus", "b.opus", "c.opus"});
    QTest::mouseClick(removeButtonOf("a.opus"), Qt::LeftButton);
    settle();
    EXPECT_THAT(texts(QAccessible::Description), ElementsAre("1 of 2", "2 of 2"));
    EXPECT_EQ(utf8(removeButtonOf("c.opus")->accessibleName()), "Remove c.opus");
    EXPECT_EQ(utf8(removeButtonOf("c.opus")->accessibleDescription()), "2 of 2");
}

TEST_F(JobListAccessibilityTest, exposesTheFocusedRow) {
    scenario_.add({"a.opus", "b.opus"});
    EXPECT_TRUE(list()->child(1)->state().focusable);
    EXPECT_FALSE(list()->child(1)->state().focused);
    list()->child(1)->actionInterface()->doAction(QAccessibleActionInterface::setFocusAction());
    EXPECT_TRUE(list()->child(1)->state().focused);
    EXPECT_EQ(list()->focusChild(), list()->child(1));
    EXPECT_EQ(focusedName(), "b.opus");
}

TEST_F(JobListAccessibilityTest, removesAJobAsAnActionOfItsRow) {
    const QString press = QAccessibleActionInterface::pressAction();
    scenario_.add({"a.opus", "b.opus"});
    QAccessibleActionInterface* action = list()->child(0)->actionInterface();
    ASSERT_TRUE(action->actionNames().contains(press));
    EXPECT_EQ(utf8(action->localizedActionName(press)), "Remove");
    EXPECT_EQ(utf8(action->localizedActionDescription(press)), "Remove");
    EXPECT_EQ(utf8(action->keyBindingsForAction(press).join(u' ')), "Del");
    action->doAction(press);
    settle();
    EXPECT_THAT(names(), ElementsAre("b.opus, in Album, Ready"));
}

TEST_F(JobListAccessibilityTest, removesNoJobThatTookTheRowSinceThePress) {
    scenario_.add({"a.opus", "b.opus"});
    JobRow* row = rowOf("a.opus");
    list()->child(0)->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    // Recycled before the event loop comes to the press.
    row->setJob(scenario_.model->jobs()[1]);
    settle();
    EXPECT_EQ(scenario_.model->jobs().size(), 2U);
}

TEST_F(JobListAccessibilityTest, offersNoPressActionWithoutARemoveButton) {
    const QString press = QAccessibleActionInterface::pressAction();
    scenario_.add({"a.opus"});
    ASSERT_TRUE(scenario_.convertAll());
    QAccessibleActionInterface* action = list()->child(0)->actionInterface();
    EXPECT_FALSE(action->actionNames().contains(press));
    action->doAction(press);
    EXPECT_EQ(scenario_.model->jobs().size(), 1U);
}

TEST_F(JobListAccessibilityTest, hasTheTextsOfARowInItsNameAndItsControlsAsChildren) {
    scenario_.holdBack("a.opus", 0.25);
    scenario_.add({"a.opus", "b.opus"});
    scenario_.start();
    ASSERT_TRUE(scenario_.waitForProgress(0));
    settle();
    const auto children = [this](int index) {
        const QAccessibleInterface* row = list()->child(index);
        std::vector<std::string> result;
        result.reserve(static_cast<std::size_t>(row->childCount()));
        for (int child = 0; child < row->childCount(); ++child) {
            result.push_back(utf8(row->child(child)->text(QAccessible::Name)));
        }
        return result;
    };
    EXPECT_THAT(children(0), ElementsAre("Progress of a.opus"));
    EXPECT_THAT(children(1), ElementsAre("Remove b.opus"));
}

TEST_F(JobListAccessibilityTest, exposesTheProgressOfARowAsAValue) {
    scenario_.holdBack("a.opus", 0.25);
    scenario_.add({"a.opus"});
    scenario_.start();
    auto* progress = rowOf("a.opus")->findChild<ProgressBar*>();
    ASSERT_TRUE(test::runUntil([&] { return progress->value() == 250; }));
    QAccessibleInterface* accessible = QAccessible::queryAccessibleInterface(progress);
    EXPECT_EQ(accessible->role(), QAccessible::ProgressBar);
    ASSERT_NE(accessible->valueInterface(), nullptr);
    EXPECT_EQ(accessible->valueInterface()->currentValue().toInt(), 250);
    EXPECT_EQ(accessible->valueInterface()->maximumValue().toInt(), 1000);
    EXPECT_EQ(accessible->parent()->role(), QAccessible::ListItem);
}

} // namespace
} // namespace kestrel
