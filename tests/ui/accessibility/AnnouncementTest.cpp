#include "Announcement.h"
#include "AccessibilityFixture.h"
#include "Button.h"
#include "FFmpegError.h"
#include "JobRow.h"
#include "JobScrollArea.h"
#include "QualitySlider.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace kestrel {
namespace {

using ::testing::ElementsAre;

/// The notifications shown to assistive technology, in order.
std::vector<std::string> notifications;

/// How many of them were hidden before, so that screen readers notice that they are shown.
int hiddenNotifications = 0;

/// The widgets that notifications were shown by, and that got the focus, in order.
std::vector<const QObject*> notifiers;
std::vector<const QObject*> focusedObjects;

void record(QAccessibleEvent* event) {
    if (event->type() == QAccessible::Focus) {
        focusedObjects.push_back(event->object());
    }
    const QAccessibleInterface* interface = event->accessibleInterface();
    if (interface == nullptr || interface->role() != QAccessible::Notification) {
        return;
    }
    if (event->type() == QAccessible::ObjectHide) {
        ++hiddenNotifications;
    } else if (event->type() == QAccessible::ObjectShow) {
        notifications.push_back(utf8(interface->text(QAccessible::Name)));
        notifiers.push_back(event->object());
        EXPECT_EQ(hiddenNotifications, static_cast<int>(notifications.size()));
    }
}

class AnnouncementTest : public AccessibilityFixture {
  public:
    AnnouncementTest(const AnnouncementTest&) = delete;
    AnnouncementTest& operator=(const AnnouncementTest&) = delete;

  protected:
    AnnouncementTest() {
        notifications.clear();
        notifiers.clear();
        focusedObjects.clear();
        hiddenNotifications = 0;
        QAccessible::installUpdateHandler(record);
    }

    ~AnnouncementTest() override { QAccessible::installUpdateHandler(nullptr); }
};

TEST_F(AnnouncementTest, announcesTheStartAndTheEndOfABatch) {
    scenario_.failWith("b.opus", "no such stream");
    scenario_.add({"a.opus", "b.opus", "c.opus"});
    EXPECT_THAT(notifications, ElementsAre());
    ASSERT_TRUE(scenario_.convertAll());
    EXPECT_THAT(notifications,
                ElementsAre("Converting", "Conversion finished: 2 complete, 1 failed"));
}

TEST_F(AnnouncementTest, announcesTheEndOfABatchThoughFilesWereAddedMeanwhile) {
    scenario_.holdBack("a.opus", 0.5);
    scenario_.add({"a.opus"});
    scenario_.start();
    scenario_.add({"b.opus"});
    scenario_.gate.open();
    ASSERT_TRUE(scenario_.finish());
    EXPECT_THAT(notifications,
                ElementsAre("Converting", "Conversion finished: 1 complete, 0 failed"));
}

TEST_F(AnnouncementTest, announcesTheEndOfABatchThoughItsOtherFilesWereRemoved) {
    scenario_.runner->setScript("a.opus", [this](const auto&, const auto& report) {
        report(0.5);
        scenario_.gate.pass();
        throw FFmpegError::processFailed("interrupted");
    });
    scenario_.add({"a.opus", "b.opus"});
    scenario_.start();
    ASSERT_TRUE(scenario_.waitForProgress(0));
    scenario_.model->remove(scenario_.model->jobs()[1]);
    scenario_.model->cancel();
    scenario_.gate.open();
    ASSERT_TRUE(scenario_.finish());
    EXPECT_THAT(notifications,
                ElementsAre("Converting", "Conversion finished: 0 complete, 1 failed"));
}

TEST_F(AnnouncementTest, announcesABatchThatWasStopped) {
    scenario_.cancelAt("b.opus");
    scenario_.add({"a.opus", "b.opus"});
    ASSERT_TRUE(scenario_.convertAll());
    EXPECT_THAT(notifications,
                ElementsAre("Converting", "Conversion stopped: 1 complete, 0 failed"));
}

TEST_F(AnnouncementTest, announcesFromWidgetsThatAreShownButInNobodysWay) {
    const auto announcements = view_.findChildren<Announcement*>();
    EXPECT_EQ(announcements.size(), 2);
    for (const Announcement* announcement : announcements) {
        EXPECT_TRUE(announcement->isVisible());
        EXPECT_EQ(announcement->size(), QSize(1, 1));
        EXPECT_TRUE(announcement->testAttribute(Qt::WA_TransparentForMouseEvents));
    }
}

// A screen reader that comes to the start after the end still finds both texts.
TEST_F(AnnouncementTest, keepsTheTextOfTheStartBesideThatOfTheOutcome) {
    scenario_.add({"a.opus"});
    ASSERT_TRUE(scenario_.convertAll());
    ASSERT_EQ(notifiers.size(), 2U);
    EXPECT_EQ(text(const_cast<QObject*>(notifiers[0])), "Converting");
    EXPECT_EQ(text(const_cast<QObject*>(notifiers[1])),
              "Conversion finished: 1 complete, 0 failed");
}

TEST_F(AnnouncementTest, announcesNothingButTheRowWhenTabEntersTheQueue) {
    scenario_.add({"a.opus", "b.opus"});
    findButton<Button>(view_, "Add Audio")->setFocus();
    focusedObjects.clear();
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    settle();
    const auto* row = qobject_cast<JobRow*>(QApplication::focusWidget());
    ASSERT_NE(row, nullptr);
    EXPECT_EQ(utf8(row->accessibleDescription()), "1 of 2");
    EXPECT_THAT(focusedObjects, ElementsAre(row));
}

TEST_F(AnnouncementTest, announcesTheRowAfterAListThatPassesItTheFocus) {
    scenario_.add({"a.opus"});
    auto* list = view_.findChild<JobScrollArea*>();
    focusedObjects.clear();
    list->setFocus();
    settle();
    EXPECT_THAT(focusedObjects, ElementsAre(list, list->rows().front()));
}

TEST_F(AnnouncementTest, announcesTheFocusLastThoughTabReachesARowThatIsGone) {
    scenario_.add({"a.opus", "b.opus"});
    const auto* list = view_.findChild<JobScrollArea*>();
    JobRow* first = list->rows().front();
    scenario_.model->remove(scenario_.model->jobs().front());
    focusedObjects.clear();
    // Before the list has been refreshed.
    first->setFocus(Qt::TabFocusReason);
    settle();
    const auto* row = qobject_cast<const JobRow*>(QApplication::focusWidget());
    ASSERT_NE(row, nullptr);
    EXPECT_EQ(row->job().source().lastPathComponent(), "b.opus");
    ASSERT_FALSE(focusedObjects.empty());
    EXPECT_EQ(focusedObjects.back(), row);
}

TEST_F(AnnouncementTest, announcesNothingWhileABatchRuns) {
    scenario_.holdBack("b.opus", 0.5);
    scenario_.add({"a.opus", "b.opus"});
    scenario_.start();
    ASSERT_TRUE(scenario_.waitForProgress(1));
    settle();
    EXPECT_THAT(notifications, ElementsAre("Converting"));
}

TEST_F(AnnouncementTest, announcesWithoutTakingTheFocus) {
    scenario_.add({"a.opus"});
    auto* slider = view_.findChild<QualitySlider*>();
    slider->setFocus();
    ASSERT_TRUE(scenario_.convertAll());
    EXPECT_TRUE(slider->hasFocus());
}

} // namespace
} // namespace kestrel
