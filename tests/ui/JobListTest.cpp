#include "JobList.h"

#include "FFmpegError.h"
#include "FractionBar.h"
#include "JobRow.h"
#include "JobScrollArea.h"
#include "Scenario.h"

#include <QApplication>
#include <QLabel>
#include <QPushButton>
#include <QScrollBar>
#include <QWheelEvent>
#include <QtTest/qtestspontaneevent.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>

namespace kestrel {
namespace {

using ::testing::ElementsAre;

class JobListTest : public ::testing::Test {
  protected:
    JobListTest() : list_(scenario_.model) {
        QObject::connect(scenario_.model.get(), &ConverterViewModel::willChange, &list_,
                         &JobList::refresh, Qt::QueuedConnection);
        list_.resize(649, 500);
        list_.show();
        list_.activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&list_));
    }

    void addMany(int count) {
        std::vector<FileURL> urls;
        urls.reserve(static_cast<std::size_t>(count));
        for (int number = 0; number < count; ++number) {
            urls.emplace_back("/no-such-folder/" + std::to_string(number) + ".opus");
        }
        scenario_.model->add(urls);
        settle();
    }

    JobScrollArea* area() const { return list_.findChild<JobScrollArea*>(); }

    QScrollBar* bar() const { return area()->verticalScrollBar(); }

    FractionBar* overall() const { return find<FractionBar>(list_, "overallProgress"); }

    /// The rows in sight, from top to bottom.
    std::vector<JobRow*> rows() const {
        std::vector<JobRow*> rows;
        for (JobRow* row : list_.findChildren<JobRow*>()) {
            if (!row->visibleRegion().isEmpty()) {
                rows.push_back(row);
            }
        }
        std::sort(rows.begin(), rows.end(),
                  [](const JobRow* a, const JobRow* b) { return a->y() < b->y(); });
        return rows;
    }

    std::vector<std::string> texts(const char* name) const {
        std::vector<std::string> texts;
        for (const JobRow* row : rows()) {
            texts.push_back(utf8(find<QLabel>(*row, name)->text()));
        }
        return texts;
    }

    JobRow* rowOf(const std::string& name) const {
        for (JobRow* row : rows()) {
            if (row->job().source().lastPathComponent() == name) {
                return row;
            }
        }
        return nullptr;
    }

    QPushButton* removeButtonOf(const std::string& name) const {
        return find<QPushButton>(*rowOf(name), "removeButton");
    }

    /// The height of a line of a failure message.
    int messageLine() const {
        return find<QLabel>(*rows().front(), "message")->fontMetrics().lineSpacing();
    }

    Scenario scenario_;
    JobList list_;
};

TEST_F(JobListTest, showsTheJobsInTheirOrder) {
    scenario_.add({"c.opus"});
    scenario_.add({"a.opus", "b.opus"});
    EXPECT_THAT(texts("name"), ElementsAre("c.opus", "a.opus", "b.opus"));
}

TEST_F(JobListTest, showsEveryOutcome) {
    scenario_.runner->setScript("bad.opus", [](const auto&, const auto&) {
        throw FFmpegError::processFailed("no such stream");
    });
    scenario_.runner->setScript("cancelled.opus",
                                [](const auto&, const auto&) { throw FFmpegError::cancelled(); });
    scenario_.add({"bad.opus", "a good.opus", "cancelled.opus", "d.opus"});
    ASSERT_TRUE(scenario_.convertAll());
    EXPECT_THAT(texts("name"), ElementsAre("a good.opus", "bad.opus", "cancelled.opus", "d.opus"));
    EXPECT_THAT(texts("state"), ElementsAre("Complete", "Failed", "Cancelled", "Ready"));
    EXPECT_EQ(texts("message")[1], "no such stream");
}

TEST_F(JobListTest, laysRowsOfUnevenHeightBelowOneAnother) {
    scenario_.runner->setScript("b.opus", [](const auto&, const auto&) {
        throw FFmpegError::processFailed("one\ntwo\nthree");
    });
    scenario_.runner->setScript(
        "c.opus", [](const auto&, const auto&) { throw FFmpegError::processFailed("one"); });
    scenario_.add({"a.opus", "b.opus", "c.opus", "d.opus"});
    ASSERT_TRUE(scenario_.convertAll());
    const std::vector<JobRow*> shown = rows();
    ASSERT_EQ(shown.size(), 4U);
    for (std::size_t index = 1; index < shown.size(); ++index) {
        EXPECT_EQ(shown[index]->y(), shown[index - 1]->geometry().bottom() + 1);
    }
    for (const JobRow* row : shown) {
        EXPECT_GE(row->height(), row->minimumSizeHint().height());
    }
    const int line = messageLine();
    EXPECT_EQ(shown[1]->height(), shown[2]->height() + line);
    EXPECT_GT(shown[2]->height(), shown[0]->height());
    EXPECT_GE(find<QLabel>(*shown[1], "message")->height(), 2 * line);
}

TEST_F(JobListTest, showsTheOverallProgressWhileABatchRunsOnly) {
    EXPECT_FALSE(overall()->isVisible());
    scenario_.holdBack("a.opus", 0.5);
    scenario_.add({"a.opus", "b.opus"});
    EXPECT_FALSE(overall()->isVisible());
    scenario_.start();
    ASSERT_TRUE(QTest::qWaitFor([this] { return overall()->value() == 250; }));
    EXPECT_TRUE(overall()->isVisible());
    EXPECT_EQ(overall()->maximum(), 1000);
    EXPECT_EQ(rowOf("a.opus")->findChild<FractionBar*>()->value(), 500);
    scenario_.gate.open();
    ASSERT_TRUE(scenario_.finish());
    EXPECT_FALSE(overall()->isVisible());
}

TEST_F(JobListTest, takesARowAwayWithAClick) {
    scenario_.add({"a.opus", "b.opus", "c.opus"});
    QTest::mouseClick(removeButtonOf("b.opus"), Qt::LeftButton);
    settle();
    EXPECT_THAT(texts("name"), ElementsAre("a.opus", "c.opus"));
}

TEST_F(JobListTest, keepsTheRowsOfTheOtherJobs) {
    scenario_.add({"a.opus", "b.opus", "c.opus"});
    JobRow* const last = rowOf("c.opus");
    scenario_.model->remove(scenario_.model->jobs().front());
    settle();
    EXPECT_EQ(rowOf("c.opus"), last);
}

TEST_F(JobListTest, keepsFewWidgetsForManyJobsAndScrollsToTheEnd) {
    addMany(5000);
    const auto rowCount = [this] { return list_.findChildren<JobRow*>().size(); };
    EXPECT_LT(rowCount(), 20);
    EXPECT_EQ(texts("name").front(), "0.opus");
    for (int value = 0; value < bar()->maximum(); value += 1777) {
        bar()->setValue(value);
    }
    bar()->setValue(bar()->maximum());
    settle();
    EXPECT_EQ(texts("name").back(), "4999.opus");
    EXPECT_EQ(rows().back()->geometry().bottom() + 1, area()->viewport()->height());
    EXPECT_LT(rowCount(), 20);
}

TEST_F(JobListTest, scrollsByTheWheelAndTheKeyboard) {
    addMany(100);
    area()->setFocus();
    QTest::keyClick(area(), Qt::Key_PageDown);
    const int afterPage = bar()->value();
    EXPECT_GT(afterPage, 0);
    const QPointF center = area()->viewport()->rect().center();
    QWheelEvent wheel(center, area()->viewport()->mapToGlobal(center), {}, {0, -120}, Qt::NoButton,
                      Qt::NoModifier, Qt::NoScrollPhase, false);
    // Only a wheel that somebody turned is passed on by those that have no use for it.
    QSpontaneKeyEvent::setSpontaneous(&wheel);
    QCoreApplication::instance()->notify(rows().front(), &wheel);
    EXPECT_GT(bar()->value(), afterPage);
}

TEST_F(JobListTest, staysWhereItIsWhileRowsAboveChange) {
    addMany(100);
    bar()->setValue(bar()->maximum() / 2 + 7);
    const std::vector<std::string> before = texts("name");
    const int y = rows().front()->y();
    for (int count = 0; count < 3; ++count) {
        scenario_.model->remove(scenario_.model->jobs().front());
    }
    settle();
    EXPECT_EQ(texts("name"), before);
    EXPECT_EQ(rows().front()->y(), y);
}

TEST_F(JobListTest, staysWhereItIsWhenARowAboveGrows) {
    scenario_.runner->setScript(
        "0.opus", [](const auto&, const auto&) { throw FFmpegError::processFailed("one\ntwo"); });
    scenario_.holdBack("1.opus", 0.5);
    addMany(100);
    bar()->setValue(bar()->maximum() / 2 + 7);
    const std::string name = texts("name").front();
    const int y = rows().front()->y();
    scenario_.start();
    ASSERT_TRUE(QTest::qWaitFor(
        [this] { return scenario_.model->jobs()[1].state.is(JobState::Case::converting); }));
    settle();
    EXPECT_EQ(texts("name").front(), name);
    EXPECT_EQ(rows().front()->y(), y);
}

TEST_F(JobListTest, scrollsBeforeTheRefreshForARemovalHasCome) {
    addMany(100);
    bar()->setValue(bar()->maximum());
    while (scenario_.model->jobs().size() > 2) {
        scenario_.model->remove(scenario_.model->jobs().back());
    }
    bar()->setValue(bar()->value() - 1);
    EXPECT_THAT(texts("name"), ElementsAre("0.opus", "1.opus"));
}

TEST_F(JobListTest, movesTheKeyboardFocusToTheNextRowWhenOneIsRemoved) {
    scenario_.add({"a.opus", "b.opus", "c.opus"});
    QPushButton* button = removeButtonOf("b.opus");
    button->setFocus();
    QTest::keyClick(button, Qt::Key_Space);
    settle();
    ASSERT_THAT(texts("name"), ElementsAre("a.opus", "c.opus"));
    EXPECT_TRUE(removeButtonOf("c.opus")->hasFocus());
    QTest::keyClick(removeButtonOf("c.opus"), Qt::Key_Space);
    settle();
    EXPECT_TRUE(removeButtonOf("a.opus")->hasFocus());
}

TEST_F(JobListTest, keepsTheRowWithTheKeyboardFocusThoughItIsScrolledAway) {
    addMany(100);
    QPushButton* button = removeButtonOf("1.opus");
    button->setFocus();
    bar()->setValue(bar()->maximum());
    settle();
    EXPECT_TRUE(button->hasFocus());
    EXPECT_TRUE(button->visibleRegion().isEmpty());
    bar()->setValue(0);
    settle();
    EXPECT_EQ(removeButtonOf("1.opus"), button);
    EXPECT_TRUE(button->hasFocus());
}

TEST_F(JobListTest, keepsTheKeyboardFocusInTheListWhenTheButtonThatHasItGoesAway) {
    scenario_.holdBack("a.opus", 0.5);
    scenario_.add({"a.opus", "b.opus"});
    removeButtonOf("a.opus")->setFocus();
    scenario_.start();
    ASSERT_FALSE(removeButtonOf("a.opus")->isVisible());
    EXPECT_TRUE(area()->hasFocus());
}

TEST_F(JobListTest, measuresMessagesAnewForAnotherWidth) {
    const std::string message = "some twenty words " + std::string(60, 'x') + " and more";
    scenario_.runner->setScript("a.opus", [&message](const auto&, const auto&) {
        throw FFmpegError::processFailed(message);
    });
    scenario_.add({"a.opus"});
    list_.resize(1600, 500);
    ASSERT_TRUE(scenario_.convertAll());
    const int oneLine = rows().front()->height();
    list_.resize(330, 500);
    settle();
    EXPECT_EQ(rows().front()->height(), oneLine + messageLine());
}

TEST_F(JobListTest, followsALargerFont) {
    scenario_.add({"a.opus", "b.opus"});
    const int before = rows().front()->height();
    const QFont usual = QApplication::font();
    QFont large = usual;
    large.setPixelSize(40);
    QApplication::setFont(large);
    settle();
    const int after = rows().front()->height();
    const int second = rows()[1]->y();
    QApplication::setFont(usual);
    settle();
    EXPECT_GT(after, before);
    EXPECT_EQ(second, after);
    EXPECT_EQ(rows().front()->height(), before);
}

} // namespace
} // namespace kestrel
