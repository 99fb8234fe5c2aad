#include "QueueView.h"

#include "DropZone.h"
#include "JobList.h"
#include "Scenario.h"
#include "SymbolView.h"

#include <QAbstractButton>
#include <QLabel>
#include <QPushButton>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace kestrel {
namespace {

using ::testing::ElementsAre;

class QueueViewTest : public ::testing::Test {
  protected:
    QueueViewTest() : view_(scenario_.model) {
        QObject::connect(scenario_.model.get(), &ConverterViewModel::willChange, &view_,
                         &QueueView::refresh, Qt::QueuedConnection);
        view_.resize(649, 640);
        EXPECT_TRUE(showActive(view_));
    }

    std::string summary() const { return utf8(find<QLabel>(view_, "summary")->text()); }

    std::string destination() const { return utf8(find<QLabel>(view_, "destinationPath")->text()); }

    QPushButton* start() const { return find<QPushButton>(view_, "startButton"); }

    QPushButton* cancel() const { return find<QPushButton>(view_, "cancelButton"); }

    QPushButton* reveal() const { return find<QPushButton>(view_, "revealButton"); }

    static void click(QAbstractButton* button) {
        ASSERT_NE(button, nullptr);
        ASSERT_TRUE(button->isVisible());
        QTest::mouseClick(button, Qt::LeftButton);
        settle();
    }

    bool showsDropZone() const { return view_.findChild<DropZone*>()->isVisible(); }

    bool showsJobList() const { return view_.findChild<JobList*>()->isVisible(); }

    Scenario scenario_;
    QueueView view_;
};

TEST_F(QueueViewTest, invitesToFillAnEmptyQueue) {
    EXPECT_EQ(summary(), "Add OPUS, OGG, or OGA files");
    EXPECT_EQ(utf8(start()->text()), "Convert 0 Files");
    EXPECT_TRUE(start()->isVisible());
    EXPECT_FALSE(start()->isEnabled());
    EXPECT_TRUE(showsDropZone());
    EXPECT_FALSE(showsJobList());
}

TEST_F(QueueViewTest, countsOneFile) {
    scenario_.add({"a.opus"});
    EXPECT_EQ(summary(), "1 audio file · 0 complete");
    EXPECT_EQ(utf8(start()->text()), "Convert 1 File");
    EXPECT_TRUE(start()->isEnabled());
    EXPECT_FALSE(showsDropZone());
    EXPECT_TRUE(showsJobList());
}

TEST_F(QueueViewTest, countsTwoFilesThoughBothAreComplete) {
    scenario_.add({"a.opus", "b.opus"});
    EXPECT_EQ(summary(), "2 audio files · 0 complete");
    ASSERT_TRUE(scenario_.convertAll());
    EXPECT_EQ(summary(), "2 audio files · 2 complete");
    EXPECT_EQ(utf8(start()->text()), "Convert 2 Files");
    EXPECT_TRUE(start()->isEnabled());
}

TEST_F(QueueViewTest, countsThreeFilesOfWhichOneIsComplete) {
    scenario_.add({"a.opus"});
    ASSERT_TRUE(scenario_.convertAll());
    scenario_.add({"b.opus", "c.opus"});
    EXPECT_EQ(summary(), "3 audio files · 1 complete");
    EXPECT_EQ(utf8(start()->text()), "Convert 3 Files");
}

TEST_F(QueueViewTest, writesLargeCountsWithoutGrouping) {
    scenario_.addMany(1234);
    EXPECT_EQ(summary(), "1234 audio files · 0 complete");
    EXPECT_EQ(utf8(start()->text()), "Convert 1234 Files");
}

TEST_F(QueueViewTest, showsTheDropZoneAgainWhenTheLastJobIsRemoved) {
    scenario_.add({"a.opus"});
    click(find<QPushButton>(view_, "removeButton"));
    EXPECT_TRUE(scenario_.model->jobs().empty());
    EXPECT_TRUE(showsDropZone());
    EXPECT_FALSE(showsJobList());
    EXPECT_EQ(summary(), "Add OPUS, OGG, or OGA files");
}

TEST_F(QueueViewTest, asksForADestinationAtFirst) {
    EXPECT_EQ(destination(), "Choose destination…");
    EXPECT_FALSE(reveal()->isVisible());
}

TEST_F(QueueViewTest, showsTheDestinationAndRevealsIt) {
    scenario_.chooseDestination("/no-such-folder/100% Übung & more");
    EXPECT_EQ(destination(), "/no-such-folder/100% Übung & more");
    click(reveal());
    EXPECT_THAT(scenario_.viewer->revealed,
                ElementsAre(FileURL("/no-such-folder/100% Übung & more")));
}

TEST_F(QueueViewTest, picksTheDestinationWithAClickOnItsPath) {
    scenario_.panel->answer = {FileURL("/no-such-folder/Out")};
    auto* button = find<QPushButton>(view_, "destinationButton");
    auto* path = find<QLabel>(view_, "destinationPath");
    // The mouse is on the button wherever it is on one of its parts.
    for (const char* part : {"destinationPath", "destinationCaption"}) {
        const QWidget* label = find<QLabel>(view_, part);
        EXPECT_EQ(view_.childAt(label->mapTo(&view_, label->rect().center())), button) << part;
    }
    QTest::mouseClick(view_.windowHandle(), Qt::LeftButton, {},
                      path->mapTo(&view_, path->rect().center()));
    settle();
    EXPECT_THAT(scenario_.panelTitles(), ElementsAre("Choose output folder"));
    EXPECT_EQ(destination(), "/no-such-folder/Out");
    EXPECT_EQ(utf8(button->accessibleName()), "Save to /no-such-folder/Out");
}

TEST_F(QueueViewTest, keepsTheWindowNarrowForALongDestination) {
    scenario_.chooseDestination("/" + std::string(3000, 'x'));
    EXPECT_LT(view_.minimumSizeHint().width(), 649);
    EXPECT_EQ(view_.width(), 649);
}

TEST_F(QueueViewTest, addsFilesAndFoldersFromItsHeader) {
    click(find<QPushButton>(view_, "addButton"));
    EXPECT_THAT(scenario_.panelTitles(), ElementsAre("Choose Opus audio to convert"));
    click(find<QPushButton>(view_, "folderButton"));
    EXPECT_THAT(scenario_.panelTitles(),
                ElementsAre("Choose Opus audio to convert", "Choose a folder of Opus audio"));
    EXPECT_NE(findButton<QPushButton>(view_, "Folder"), nullptr);
    EXPECT_NE(findButton<QPushButton>(view_, "Add Audio"), nullptr);
}

TEST_F(QueueViewTest, addsFilesAndFoldersFromTheDropZone) {
    click(findButton<QPushButton>(view_, "Choose Audio"));
    EXPECT_THAT(scenario_.panelTitles(), ElementsAre("Choose Opus audio to convert"));
    click(findButton<QPushButton>(view_, "Choose Folder"));
    EXPECT_THAT(scenario_.panelTitles(),
                ElementsAre("Choose Opus audio to convert", "Choose a folder of Opus audio"));
}

TEST_F(QueueViewTest, showsCancelInPlaceOfStartWhileABatchRuns) {
    scenario_.holdBack("a.opus", 0.25);
    scenario_.add({"a.opus"});
    scenario_.chooseDestination("/no-such-folder/Out");
    EXPECT_FALSE(cancel()->isVisible());
    click(start());
    ASSERT_TRUE(scenario_.model->isConverting());
    EXPECT_FALSE(start()->isVisible());
    EXPECT_TRUE(cancel()->isVisible());
    EXPECT_TRUE(cancel()->isEnabled());
    EXPECT_EQ(utf8(cancel()->text()), "Cancel");
    EXPECT_TRUE(find<QPushButton>(view_, "addButton")->isEnabled());
    EXPECT_TRUE(find<QPushButton>(view_, "folderButton")->isEnabled());

    click(cancel());
    EXPECT_EQ(scenario_.runner->interrupts(), 1);
    scenario_.gate.open();
    ASSERT_TRUE(scenario_.finish());
    EXPECT_TRUE(start()->isVisible());
    EXPECT_FALSE(cancel()->isVisible());
}

TEST_F(QueueViewTest, movesTheKeyboardFocusFromStartToCancelAndBack) {
    scenario_.holdBack("a.opus", 0.25);
    scenario_.add({"a.opus"});
    scenario_.chooseDestination("/no-such-folder/Out");
    start()->setFocus();
    QTest::keyClick(start(), Qt::Key_Space);
    settle();
    EXPECT_TRUE(cancel()->hasFocus());
    scenario_.gate.open();
    ASSERT_TRUE(scenario_.finish());
    EXPECT_TRUE(start()->hasFocus());
}

TEST_F(QueueViewTest, startsWithoutADestinationSoThatTheModelCanRefuse) {
    scenario_.add({"a.opus"});
    click(start());
    EXPECT_EQ(scenario_.model->alertMessage(), "Choose an output folder first.");
    EXPECT_FALSE(scenario_.model->isConverting());
}

TEST_F(QueueViewTest, givesEveryButtonAName) {
    scenario_.chooseDestination("/no-such-folder/Out");
    scenario_.add({"a.opus"});
    for (const QAbstractButton* button : view_.findChildren<QAbstractButton*>()) {
        const QString name =
            button->accessibleName().isEmpty() ? button->text() : button->accessibleName();
        EXPECT_GT(name.size(), 2) << utf8(button->objectName());
    }
    EXPECT_EQ(utf8(reveal()->accessibleName()), "Show output folder");
}

TEST_F(QueueViewTest, fillsTheDestinationsButtonWithItsParts) {
    const auto* button = find<QPushButton>(view_, "destinationButton");
    const QRect caption = find<QLabel>(view_, "destinationCaption")->geometry();
    const QRect path = find<QLabel>(view_, "destinationPath")->geometry();
    const QRect symbol = button->findChild<SymbolView*>()->geometry();
    EXPECT_EQ(symbol.left(), 0);
    EXPECT_EQ(symbol.width(), symbol.height() > 0 ? symbolSize(button->font()) : 0);
    EXPECT_EQ(caption.top(), 0);
    EXPECT_EQ(path.bottom() + 1, button->height());
    EXPECT_EQ(path.right() + 1, button->width());
}

} // namespace
} // namespace kestrel
