#include "JobListFixture.h"
#include "RunUntil.h"

#include <QWheelEvent>
#include <QtTest/qtestspontaneevent.h>

#include <gmock/gmock.h>

namespace kestrel {
namespace {

using ::testing::ElementsAre;

using JobListScrollTest = JobListFixture;

TEST_F(JobListScrollTest, keepsFewWidgetsForManyJobsAndScrollsToTheEnd) {
    scenario_.addMany(5000);
    const auto rowCount = [this] { return list_.findChildren<JobRow*>().size(); };
    EXPECT_LT(rowCount(), 20);
    EXPECT_EQ(texts("name").front(), "0.opus");
    for (int value = 0; value < bar()->maximum(); value += 1777) {
        bar()->setValue(value);
    }
    bar()->setValue(bar()->maximum());
    settle();
    EXPECT_EQ(texts("name").back(), "4999.opus");
    EXPECT_EQ(rows().back()->geometry().bottom() + 1 + 6, area()->viewport()->height());
    EXPECT_LT(rowCount(), 20);
}

TEST_F(JobListScrollTest, scrollsByTheWheelOverARow) {
    scenario_.addMany(100);
    const QPointF center = area()->viewport()->rect().center();
    QWheelEvent wheel(center, area()->viewport()->mapToGlobal(center), {}, {0, -120}, Qt::NoButton,
                      Qt::NoModifier, Qt::NoScrollPhase, false);
    // An ignored wheel event propagates to the parent only if it is spontaneous.
    QSpontaneKeyEvent::setSpontaneous(&wheel);
    QCoreApplication::instance()->notify(rows().front(), &wheel);
    EXPECT_GT(bar()->value(), 0);
}

TEST_F(JobListScrollTest, scrollsByAThirdOfARowAndByPages) {
    scenario_.addMany(100);
    EXPECT_EQ(bar()->singleStep(), rows().front()->height() / 3);
    EXPECT_EQ(bar()->pageStep(), area()->viewport()->height());
}

TEST_F(JobListScrollTest, staysWhereItIsWhileRowsAboveChange) {
    scenario_.addMany(100);
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

TEST_F(JobListScrollTest, staysWhereItIsWhenARowAboveGrows) {
    scenario_.failWith("0.opus", "one\ntwo");
    scenario_.holdBack("1.opus", 0.5);
    scenario_.addMany(100);
    bar()->setValue(bar()->maximum() / 2 + 7);
    const std::string name = texts("name").front();
    const int y = rows().front()->y();
    scenario_.start();
    ASSERT_TRUE(test::runUntil(
        [this] { return scenario_.model->jobs()[1].state.is(JobState::Case::converting); }));
    settle();
    EXPECT_EQ(texts("name").front(), name);
    EXPECT_EQ(rows().front()->y(), y);
}

TEST_F(JobListScrollTest, staysWhereItIsWhenTheTopmostRowFails) {
    scenario_.runner->setScript("1.opus", [this](const auto&, const auto&) {
        scenario_.gate.pass();
        throw FFmpegError::processFailed("short");
    });
    scenario_.holdBack("2.opus", 0.5);
    scenario_.addMany(100);
    scenario_.start();
    ASSERT_TRUE(test::runUntil(
        [this] { return scenario_.model->jobs()[1].state.is(JobState::Case::converting); }));
    settle();
    bar()->setValue(bar()->value() + rowOf("1.opus")->y());
    ASSERT_EQ(rows().front(), rowOf("1.opus"));
    scenario_.gate.open();
    ASSERT_TRUE(test::runUntil(
        [this] { return scenario_.model->jobs()[1].state.is(JobState::Case::failed); }));
    settle();
    EXPECT_EQ(rowOf("1.opus")->y(), 0);
}

TEST_F(JobListScrollTest, scrollsByTheExactStepThoughTheListHasChanged) {
    scenario_.addMany(100);
    bar()->setValue(bar()->maximum() / 2 + 7);
    const std::string name = texts("name")[4];
    const int y = rowOf(name)->y();
    for (const int step : {40, -60}) {
        scenario_.model->remove(scenario_.model->jobs().front());
        bar()->setValue(bar()->value() + step);
        settle();
        ASSERT_NE(rowOf(name), nullptr);
    }
    EXPECT_EQ(rowOf(name)->y(), y + 20);
}

TEST_F(JobListScrollTest, scrollsBeforeTheRefreshAfterARemoval) {
    scenario_.addMany(100);
    bar()->setValue(bar()->maximum());
    while (scenario_.model->jobs().size() > 2) {
        scenario_.model->remove(scenario_.model->jobs().back());
    }
    bar()->setValue(bar()->value() - 1);
    EXPECT_THAT(texts("name"), ElementsAre("0.opus", "1.opus"));
}

TEST_F(JobListScrollTest, keepsFewWidgetsForAHundredThousandJobs) {
    scenario_.addMany(100'000);
    area()->setFocus();
    for (int step = 0; step <= 20; ++step) {
        bar()->setValue(static_cast<int>(qint64{bar()->maximum()} * step / 20));
        settle();
        EXPECT_GE(rows().size(), 6U);
    }
    EXPECT_EQ(texts("name").back(), "99999.opus");
    EXPECT_LT(list_.findChildren<JobRow*>().size(), 20);
}

TEST_F(JobListScrollTest, closesTheGapOfAVisibleRow) {
    scenario_.addMany(100);
    bar()->setValue(bar()->maximum() / 2 + 7);
    const std::vector<std::string> before = texts("name");
    const int y = rows()[0]->y();
    ASSERT_LT(y, 0);
    QTest::mouseClick(removeButtonOf(before[1]), Qt::LeftButton);
    settle();
    EXPECT_EQ(texts("name")[0], before[0]);
    EXPECT_EQ(texts("name")[1], before[2]);
    EXPECT_EQ(rows()[0]->y(), y);
}

TEST_F(JobListScrollTest, measuresVisibleMessagesOnly) {
    for (int number = 0; number < 200; ++number) {
        scenario_.failWith(std::to_string(number) + ".opus", "no such stream");
    }
    scenario_.addMany(200);
    ASSERT_TRUE(scenario_.convertAll());
    const std::size_t atFirst = area()->heights().measuredCount();
    EXPECT_GE(atFirst, rows().size());
    EXPECT_LT(atFirst, 20U);
    bar()->setValue(bar()->maximum());
    const std::size_t atLast = area()->heights().measuredCount();
    EXPECT_GT(atLast, atFirst);
    EXPECT_LT(atLast, 40U);
    bar()->setValue(0);
    area()->refresh();
    EXPECT_EQ(area()->heights().measuredCount(), atLast);
}

TEST_F(JobListScrollTest, staysWhereItIsWhileRowsAboveAreMeasuredLower) {
    for (int number = 0; number < 100; ++number) {
        scenario_.failWith(std::to_string(number) + ".opus", "short");
    }
    scenario_.addMany(100);
    ASSERT_TRUE(scenario_.convertAll());
    bar()->setValue(bar()->maximum() / 2);
    settle();
    constexpr int step = 25;
    for (int count = 0; count < 60; ++count) {
        const JobRow* row = rows().front();
        const std::string name = texts("name").front();
        const int y = row->y();
        const int line = messageLine();
        const std::size_t measured = area()->heights().measuredCount();
        const int value = bar()->value();
        bar()->setValue(value - step);
        ASSERT_EQ(rowOf(name)->y(), y + step);
        const auto newlyMeasured = static_cast<int>(area()->heights().measuredCount() - measured);
        ASSERT_EQ(bar()->value(), value - step - newlyMeasured * line);
    }
    EXPECT_GT(area()->heights().measuredCount(), 20U);
}

TEST_F(JobListScrollTest, appliesARemovalOnceHoweverOftenItRefreshes) {
    for (int number = 0; number < 50; ++number) {
        scenario_.failWith(std::to_string(number) + ".opus", "no such stream");
    }
    scenario_.addMany(100);
    ASSERT_TRUE(scenario_.convertAll());
    // Knows the failures from the queue, not from changes that it could apply again.
    JobScrollArea late(scenario_.model);
    late.refresh();
    scenario_.model->remove(scenario_.model->jobs().front());
    late.refresh();
    const qint64 total = late.heights().offsets().total();
    late.refresh();
    EXPECT_EQ(late.heights().offsets().total(), total);
}

TEST_F(JobListScrollTest, scrollsToTheEndThoughRowsAreLowerThanEstimated) {
    for (int number = 0; number < 100; ++number) {
        scenario_.failWith(std::to_string(number) + ".opus", "short");
    }
    scenario_.addMany(100);
    ASSERT_TRUE(scenario_.convertAll());
    bar()->setValue(bar()->maximum());
    EXPECT_EQ(bar()->value(), bar()->maximum());
    EXPECT_EQ(texts("name").back(), "99.opus");
    EXPECT_EQ(rows().back()->geometry().bottom() + 1 + 6, area()->viewport()->height());
}

} // namespace
} // namespace kestrel
