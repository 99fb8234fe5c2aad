#include "ContentView.h"
#include "SettingsSidebar.h"

#include "QueueView.h"
#include "Scenario.h"
#include "Timeout.h"

#include <QMessageBox>
#include <QPushButton>

#include <gtest/gtest.h>

#include <functional>
#include <optional>

namespace kestrel {
namespace {

class ContentViewTest : public ::testing::Test {
  protected:
    ContentViewTest()
        : view_(scenario_.model, [this]() -> std::optional<FileURL> {
              ++lookups_;
              return std::nullopt;
          }) {
        view_.resize(960, 640);
        EXPECT_TRUE(showActive(view_));
        lookups_ = 0;
    }

    /// A refresh locates ffmpeg twice, for the colour and for the text.
    int refreshes() const { return lookups_ / 2; }

    QMessageBox* alert() const { return view_.findChild<QMessageBox*>(); }

    void raise(const char* message) {
        scenario_.model->setAlertMessage(message);
        settle();
        ASSERT_NE(alert(), nullptr);
        ASSERT_TRUE(waitUntilShown(*alert()));
    }

    void expectDismissalBy(const std::function<void()>& dismiss) {
        raise("Choose an output folder first.");
        dismiss();
        settle();
        EXPECT_EQ(scenario_.model->alertMessage(), std::nullopt);
        EXPECT_EQ(alert(), nullptr);
    }

    Scenario scenario_;
    /// Calls of `locateBinary`.
    int lookups_ = 0;
    ContentView view_;
};

TEST_F(ContentViewTest, coalescesManyChangesIntoOneRefresh) {
    for (int count = 0; count < 50; ++count) {
        scenario_.model->setIsDropTargeted(count % 2 == 0);
    }
    EXPECT_EQ(refreshes(), 0);
    settle();
    EXPECT_EQ(refreshes(), 1);
}

TEST_F(ContentViewTest, refreshesAgainInTheNextIteration) {
    scenario_.model->setIsDropTargeted(true);
    settle();
    scenario_.model->setIsDropTargeted(false);
    settle();
    EXPECT_EQ(refreshes(), 2);
}

TEST_F(ContentViewTest, refreshesNothingWhileNothingChanges) {
    settle();
    EXPECT_EQ(refreshes(), 0);
}

TEST_F(ContentViewTest, showsWhatTheModelIsAfterTheChange) {
    scenario_.add({"a.opus"});
    EXPECT_EQ(utf8(find<QPushButton>(view_, "startButton")->text()), "Convert 1 File");
}

TEST_F(ContentViewTest, raisesTheAlert) {
    raise("FFmpeg was not found. <b>Install</b> it");
    EXPECT_EQ(utf8(alert()->windowTitle()), "Kestrel");
    EXPECT_EQ(utf8(alert()->text()), "FFmpeg was not found. <b>Install</b> it");
    EXPECT_EQ(alert()->textFormat(), Qt::PlainText);
    EXPECT_EQ(alert()->windowModality(), Qt::ApplicationModal);
    ASSERT_EQ(alert()->buttons().size(), 1);
    EXPECT_EQ(utf8(alert()->buttons().front()->text()), "OK");
}

TEST_F(ContentViewTest, dismissesTheAlertByItsButton) {
    expectDismissalBy([this] { QTest::mouseClick(alert()->buttons().front(), Qt::LeftButton); });
}

TEST_F(ContentViewTest, dismissesTheAlertByEscape) {
    expectDismissalBy([this] { QTest::keyClick(alert(), Qt::Key_Escape); });
}

TEST_F(ContentViewTest, dismissesTheAlertByEnter) {
    expectDismissalBy([this] { QTest::keyClick(alert(), Qt::Key_Return); });
}

TEST_F(ContentViewTest, dismissesTheAlertByClosingIt) {
    expectDismissalBy([this] { alert()->close(); });
}

TEST_F(ContentViewTest, raisesTheAlertAgainAfterADismissal) {
    expectDismissalBy([this] { QTest::keyClick(alert(), Qt::Key_Escape); });
    expectDismissalBy([this] { QTest::keyClick(alert(), Qt::Key_Escape); });
}

TEST_F(ContentViewTest, showsOneAlertWithTheLatestText) {
    raise("first");
    scenario_.model->setAlertMessage("second");
    settle();
    EXPECT_EQ(view_.findChildren<QMessageBox*>().size(), 1);
    EXPECT_EQ(utf8(alert()->text()), "second");
}

TEST_F(ContentViewTest, closesTheAlertWhenTheMessageIsReset) {
    raise("first");
    scenario_.model->setAlertMessage(std::nullopt);
    settle();
    EXPECT_EQ(alert(), nullptr);
}

TEST_F(ContentViewTest, raisesTheAlertWhenStartIsRefused) {
    scenario_.add({"a.opus"});
    QTest::mouseClick(find<QPushButton>(view_, "startButton"), Qt::LeftButton);
    settle();
    ASSERT_NE(alert(), nullptr);
    EXPECT_EQ(utf8(alert()->text()), "Choose an output folder first.");
}

TEST_F(ContentViewTest, givesTheQueueTheWidthThatTheSidebarLeaves) {
    EXPECT_EQ(view_.findChild<SettingsSidebar*>()->width(), 310);
    EXPECT_GT(view_.findChild<QueueView*>()->width(), 640);
    view_.resize(1400, 800);
    settle();
    EXPECT_EQ(view_.findChild<SettingsSidebar*>()->width(), 310);
    EXPECT_GT(view_.findChild<QueueView*>()->width(), 1080);
}

} // namespace
} // namespace kestrel
