#include "JobListFixture.h"
#include "PaintCounter.h"
#include "RunUntil.h"

#include <QImage>
#include <QPixmap>
#include <QScreen>

#include <memory>
#include <string>
#include <vector>

namespace kestrel {
namespace {

/// What is repainted when the list scrolls by a row, and whether the screen shows it.
class JobListRepaintTest : public JobListFixture {
  protected:
    JobListRepaintTest() {
        scenario_.addMany(100);
        scrollBy(bar()->maximum() / 2);
        // Creates the widgets of the rows that come into view later.
        scrollBy(2 * rowHeight());
    }

    int rowHeight() const { return rows().front()->height(); }

    /// Scrolls, and waits for the list to be painted.
    void scrollBy(int pixels) {
        PaintCounter paints(*area()->viewport());
        bar()->setValue(bar()->value() + pixels);
        EXPECT_TRUE(test::runUntil([&paints] { return paints.count > 0; }));
        settle();
    }

    bool isOnScreen() {
        const QPixmap shown = window_.screen()->grabWindow(window_.winId());
        const auto format = QImage::Format_RGB32;
        return shown.toImage().convertToFormat(format) ==
               window_.grab().toImage().convertToFormat(format);
    }
};

TEST_F(JobListRepaintTest, doesNotRepaintARowThatStaysVisible) {
    JobRow* row = rows()[3];
    PaintCounter rowPaints(*row);
    PaintCounter namePaints(*find<QLabel>(*row, "name"));
    const int y = row->y();
    // Not by whole rows: the separators move, too.
    scrollBy(rowHeight() - 5);
    EXPECT_EQ(row->y(), y - (rowHeight() - 5));
    EXPECT_EQ(rowPaints.count, 0);
    EXPECT_EQ(namePaints.count, 0);
}

TEST_F(JobListRepaintTest, paintsARowThatComesIntoViewOnce) {
    std::vector<std::unique_ptr<PaintCounter>> paints;
    for (const JobRow* row : list_.findChildren<JobRow*>()) {
        paints.push_back(std::make_unique<PaintCounter>(*find<QLabel>(*row, "name")));
    }
    const std::string last = texts("name").back();
    scrollBy(2 * rowHeight());
    ASSERT_NE(texts("name").back(), last);
    ASSERT_EQ(list_.findChildren<JobRow*>().size(), static_cast<qsizetype>(paints.size()));
    int total = 0;
    for (const auto& counter : paints) {
        EXPECT_LE(counter->count, 1);
        total += counter->count;
    }
    EXPECT_GE(total, 2);
    EXPECT_LE(total, 3);
}

TEST_F(JobListRepaintTest, doesNotRepaintTheWindowBelowTheList) {
    PaintCounter paints(window_);
    scrollBy(rowHeight());
    EXPECT_EQ(paints.count, 0);
}

TEST_F(JobListRepaintTest, showsWhatAFullRepaintWouldShow) {
    for (const int pixels : {1, rowHeight(), 19, -7, -3 * rowHeight(), 2 * rowHeight() + 5}) {
        scrollBy(pixels);
        EXPECT_TRUE(test::runUntil([this] { return isOnScreen(); })) << pixels;
    }
}

TEST_F(JobListRepaintTest, showsARemovalAndAScrollAtOnce) {
    const std::string name = texts("name")[4];
    for (const int pixels : {rowHeight() + 3, -rowHeight()}) {
        scenario_.model->remove(rows()[1]->job());
        scrollBy(pixels);
        EXPECT_TRUE(test::runUntil([this] { return isOnScreen(); })) << pixels;
    }
    EXPECT_NE(rowOf(name), nullptr);
}

TEST_F(JobListRepaintTest, showsRowsThatWereAddedToAShortList) {
    while (scenario_.model->jobs().size() > 2) {
        scenario_.model->remove(scenario_.model->jobs().back());
    }
    settle();
    for (const char* path : {"/no-such-folder/a.opus", "/no-such-folder/b.opus"}) {
        scenario_.model->add({FileURL(path)});
        EXPECT_TRUE(test::runUntil([this] { return rows().size() > 2 && isOnScreen(); })) << path;
    }
}

TEST_F(JobListRepaintTest, showsTheSeparatorsOfTheLastRows) {
    scrollBy(bar()->maximum());
    scenario_.model->add({FileURL("/no-such-folder/more.opus")});
    settle();
    EXPECT_TRUE(test::runUntil([this] { return isOnScreen(); }));
    scenario_.model->remove(scenario_.model->jobs().back());
    settle();
    EXPECT_TRUE(test::runUntil([this] { return isOnScreen(); }));
}

TEST_F(JobListRepaintTest, scrollsWhileItIsHidden) {
    const std::string name = texts("name")[4];
    const int y = rowOf(name)->y();
    list_.hide();
    bar()->setValue(bar()->value() + 40);
    bar()->setValue(bar()->value() + 50);
    list_.show();
    settle();
    EXPECT_EQ(rowOf(name)->y(), y - 90);
    EXPECT_TRUE(test::runUntil([this] { return isOnScreen(); }));
}

} // namespace
} // namespace kestrel
