#include "ContentView.h"

#include "Alert.h"
#include "Button.h"
#include "Label.h"
#include "QueueView.h"
#include "RunUntil.h"
#include "Scenario.h"
#include "SettingsSidebar.h"
#include "ThemeColor.h"
#include "Timeout.h"

#include <QAccessible>
#include <QApplication>
#include <QImage>
#include <QPushButton>
#include <QScreen>

#include <gtest/gtest.h>

#include <functional>
#include <optional>
#include <string>

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

    Alert* alert() const { return view_.findChild<Alert*>(); }

    QPushButton* okButton() const { return alert()->findChild<QPushButton*>(); }

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
    EXPECT_EQ(utf8(alert()->message()), "FFmpeg was not found. <b>Install</b> it");
    EXPECT_EQ(alert()->windowModality(), Qt::ApplicationModal);
    ASSERT_EQ(alert()->findChildren<QPushButton*>().size(), 1);
    EXPECT_EQ(utf8(okButton()->text()), "OK");
    EXPECT_TRUE(okButton()->isDefault());
    // The pointer may be anywhere.
    okButton()->setAttribute(Qt::WA_UnderMouse, false);
    const QColor purple = ThemeColor(ThemeColor::Name::purple).color(view_.palette());
    EXPECT_EQ(okButton()->grab().toImage().pixelColor(okButton()->width() / 2, 1), purple);
}

TEST_F(ContentViewTest, showsTheTitleAboveTheMessageOfTheAlert) {
    raise("Choose an output folder first.");
    const auto* headline = find<Label>(*alert(), "alertHeadline");
    const auto* message = find<Label>(*alert(), "alertMessage");
    EXPECT_EQ(utf8(headline->text()), "Kestrel");
    EXPECT_TRUE(headline->isVisible());
    EXPECT_EQ(headline->font().weight(), QFont::Bold);
    EXPECT_EQ(message->geometry().top(), headline->geometry().bottom() + 1 + 6);
    EXPECT_EQ(message->geometry().left(), headline->geometry().left());
}

TEST_F(ContentViewTest, placesTheButtonOfTheAlertAtItsEnd) {
    for (const Qt::LayoutDirection direction : {Qt::LeftToRight, Qt::RightToLeft}) {
        QApplication::setLayoutDirection(direction);
        raise("Choose an output folder first.");
        const QRect button = okButton()->geometry();
        const int end =
            direction == Qt::LeftToRight ? alert()->width() - 1 - button.right() : button.left();
        EXPECT_EQ(end, 24);
        EXPECT_EQ(alert()->height() - 1 - button.bottom(), 20);
        scenario_.model->setAlertMessage(std::nullopt);
        settle();
    }
    QApplication::setLayoutDirection(Qt::LeftToRight);
}

TEST_F(ContentViewTest, centresTheAlertOverItsWindowAndKeepsItOnTheScreen) {
    raise("Choose an output folder first.");
    const QPoint offset = alert()->geometry().center() - view_.frameGeometry().center();
    EXPECT_LE(offset.manhattanLength(), 2);
    // What the window system was told is what Qt maps positions with.
    EXPECT_EQ(alert()->mapToGlobal(QPoint()), alert()->geometry().topLeft());
    scenario_.model->setAlertMessage(std::nullopt);
    settle();
    view_.move(view_.screen()->availableGeometry().bottomRight() - QPoint(40, 40));
    settle();
    Alert atTheEdge(&view_);
    atTheEdge.setMessage(QStringLiteral("Choose an output folder first."));
    atTheEdge.show();
    // Before the window manager may have moved it.
    EXPECT_TRUE(view_.screen()->availableGeometry().contains(atTheEdge.geometry()));
}

TEST_F(ContentViewTest, wrapsALongMessageOfTheAlert) {
    raise("Choose an output folder first.");
    const QSize brief = alert()->size();
    scenario_.model->setAlertMessage("one sentence after the other " + std::string(300, 'x') + " " +
                                     std::string("and so on ") + std::string("and on ") +
                                     std::string("to the end"));
    settle();
    const auto* message = find<Label>(*alert(), "alertMessage");
    EXPECT_GE(message->height(), message->heightForWidth(message->width()));
    EXPECT_TRUE(test::runUntil([&] { return alert()->height() > brief.height(); }));
}

TEST_F(ContentViewTest, exposesTheAlertWithTitleAndMessage) {
    raise("Choose an output folder first.");
    const QAccessibleInterface* interface = QAccessible::queryAccessibleInterface(alert());
    ASSERT_NE(interface, nullptr);
    EXPECT_EQ(interface->role(), QAccessible::AlertMessage);
    EXPECT_EQ(utf8(interface->text(QAccessible::Name)), "Kestrel");
    EXPECT_EQ(utf8(interface->text(QAccessible::Description)), "");
}

TEST_F(ContentViewTest, roundsTheCornersOfTheAlertOnlyWhereTheyAreBlended) {
    raise("Choose an output folder first.");
    for (const bool isBlended : {true, false}) {
        alert()->setAttribute(Qt::WA_TranslucentBackground, isBlended);
        QImage image(alert()->size(), QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::transparent);
        alert()->render(&image, {}, {}, QWidget::DrawChildren);
        EXPECT_EQ(image.pixelColor(0, 0).alpha() == 0, isBlended);
        EXPECT_EQ(image.pixelColor(image.rect().center()).alpha(), 255);
    }
}

TEST_F(ContentViewTest, raisesTheAlertOfAModelThatHasOneAlready) {
    scenario_.model->setAlertMessage("earlier");
    settle();
    alert()->close();
    settle();
    scenario_.model->setAlertMessage("earlier");
    const ContentView later(scenario_.model, [] { return std::nullopt; });
    settle();
    ASSERT_NE(later.findChild<Alert*>(), nullptr);
    EXPECT_EQ(utf8(later.findChild<Alert*>()->message()), "earlier");
    scenario_.model->setAlertMessage(std::nullopt);
    settle();
}

TEST_F(ContentViewTest, dismissesTheAlertByItsButton) {
    expectDismissalBy([this] { QTest::mouseClick(okButton(), Qt::LeftButton); });
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
    EXPECT_EQ(view_.findChildren<Alert*>().size(), 1);
    EXPECT_EQ(utf8(alert()->message()), "second");
}

TEST_F(ContentViewTest, closesTheAlertWhenTheMessageIsReset) {
    raise("first");
    int changes = 0;
    QObject::connect(scenario_.model.get(), &ConverterViewModel::willChange, &view_,
                     [&changes] { ++changes; });
    scenario_.model->setAlertMessage(std::nullopt);
    settle();
    EXPECT_EQ(alert(), nullptr);
    EXPECT_EQ(changes, 1) << "the view writes nothing back";
}

TEST_F(ContentViewTest, raisesTheNextAlertThoughTheLastOneIsJustBeingDismissed) {
    raise("first");
    alert()->close();
    scenario_.model->setAlertMessage("second");
    settle();
    ASSERT_NE(alert(), nullptr);
    EXPECT_TRUE(alert()->isVisible());
    EXPECT_EQ(utf8(alert()->message()), "second");
}

TEST_F(ContentViewTest, raisesTheAlertWhenStartIsRefused) {
    scenario_.add({"a.opus"});
    QTest::mouseClick(find<QPushButton>(view_, "startButton"), Qt::LeftButton);
    settle();
    ASSERT_NE(alert(), nullptr);
    EXPECT_EQ(utf8(alert()->message()), "Choose an output folder first.");
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
