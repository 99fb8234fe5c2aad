#include "JobListFixture.h"
#include "RunUntil.h"

#include <QImage>
#include <QLayout>
#include <QPaintEvent>

#include <gmock/gmock.h>

#include <map>
#include <set>

namespace kestrel {
namespace {

using ::testing::ElementsAre;

using JobListTest = JobListFixture;

TEST_F(JobListTest, showsTheJobsInTheirOrder) {
    scenario_.add({"c.opus"});
    scenario_.add({"a.opus", "b.opus"});
    EXPECT_THAT(texts("name"), ElementsAre("c.opus", "a.opus", "b.opus"));
}

TEST_F(JobListTest, showsEveryOutcome) {
    scenario_.failWith("bad.opus", "no such stream");
    scenario_.cancelAt("cancelled.opus");
    scenario_.add({"bad.opus", "a good.opus", "cancelled.opus", "d.opus"});
    ASSERT_TRUE(scenario_.convertAll());
    EXPECT_THAT(texts("name"), ElementsAre("a good.opus", "bad.opus", "cancelled.opus", "d.opus"));
    EXPECT_THAT(texts("state"), ElementsAre("Complete", "Failed", "Cancelled", "Ready"));
    EXPECT_EQ(texts("message")[1], "no such stream");
}

TEST_F(JobListTest, laysRowsOfUnevenHeightBelowOneAnother) {
    scenario_.failWith("b.opus", "one\ntwo\nthree");
    scenario_.failWith("c.opus", "one");
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
    EXPECT_EQ(find<QLabel>(*shown[1], "message")->height(), 2 * line);
}

TEST_F(JobListTest, showsTheOverallProgressWhileABatchRunsOnly) {
    EXPECT_FALSE(overall()->isVisible());
    scenario_.holdBack("a.opus", 0.5);
    scenario_.add({"a.opus", "b.opus"});
    EXPECT_FALSE(overall()->isVisible());
    scenario_.start();
    ASSERT_TRUE(test::runUntil([this] { return overall()->value() == 250; }));
    EXPECT_TRUE(overall()->isVisible());
    EXPECT_EQ(overall()->maximum(), 1000);
    EXPECT_EQ(rowOf("a.opus")->findChild<ProgressBar*>()->value(), 500);
    scenario_.gate.open();
    ASSERT_TRUE(scenario_.finish());
    EXPECT_FALSE(overall()->isVisible());
}

TEST_F(JobListTest, removesARowByAClick) {
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

TEST_F(JobListTest, remeasuresMessagesForANewWidth) {
    const std::string message = "some twenty words " + std::string(60, 'x') + " and more";
    scenario_.failWith("a.opus", message);
    scenario_.add({"a.opus"});
    window_.resize(1600, 560);
    ASSERT_TRUE(scenario_.convertAll());
    const int oneLine = rows().front()->height();
    window_.resize(330, 560);
    settle();
    EXPECT_EQ(rows().front()->height(), oneLine + messageLine());
}

TEST_F(JobListTest, followsALargerFont) {
    scenario_.add({"a.opus", "b.opus"});
    const int before = rows().front()->height();
    const QFont original = QApplication::font();
    QFont large = original;
    large.setPixelSize(40);
    QApplication::setFont(large);
    settle();
    const int after = rows().front()->height();
    const int second = rows()[1]->y();
    QApplication::setFont(original);
    settle();
    EXPECT_GT(after, before);
    EXPECT_EQ(second, after + 6);
    EXPECT_EQ(rows().front()->height(), before);
}

TEST_F(JobListTest, alignsRowsWithTheHeaderAndFooter) {
    scenario_.addMany(100);
    for (const Qt::LayoutDirection direction : {Qt::LeftToRight, Qt::RightToLeft}) {
        window_.setLayoutDirection(direction);
        settle();
        const JobRow* row = rows().front();
        EXPECT_EQ(row->mapTo(area(), row->contentsRect().topLeft()).y(), 6);
        const QRect contents = row->rect().adjusted(JobRow::overhang, 0, -JobRow::overhang, 0);
        EXPECT_EQ(row->mapTo(area(), contents.topLeft()).x(), 26);
        EXPECT_EQ(row->mapTo(area(), contents.bottomRight()).x() + 1, area()->width() - 26);
        EXPECT_EQ(bar()->width(), 12);
        const int barLeft = bar()->mapTo(area(), QPoint()).x();
        EXPECT_EQ(barLeft, direction == Qt::LeftToRight ? area()->width() - 12 : 0);
    }
}

TEST_F(JobListTest, paintsNoScrollBarWhereThereIsNothingToScroll) {
    const auto colors = [this] {
        const QImage image = list_.grab().toImage();
        const QRect place(bar()->mapTo(&list_, QPoint()), bar()->size());
        std::set<QRgb> found;
        for (int y = place.top(); y <= place.bottom(); ++y) {
            found.insert(image.pixel(place.center().x(), y));
        }
        return found;
    };
    scenario_.add({"a.opus"});
    EXPECT_TRUE(bar()->isVisible());
    EXPECT_THAT(colors(), ElementsAre(window_.palette().color(QPalette::Window).rgb()));
    scenario_.addMany(100);
    EXPECT_EQ(colors().count(window_.palette().color(QPalette::Window).rgb()), 1U);
    EXPECT_GT(colors().size(), 1U);
}

TEST_F(JobListTest, drawsALineBetweenRowsOnly) {
    scenario_.add({"a.opus", "b.opus"});
    for (const Qt::LayoutDirection direction : {Qt::LeftToRight, Qt::RightToLeft}) {
        window_.setLayoutDirection(direction);
        settle();
        const QImage image = area()->grab().toImage();
        const QRgb background = window_.palette().color(QPalette::Window).rgb();
        const auto line = [&](const char* name) {
            const JobRow* row = rowOf(name);
            const int y = row->mapTo(area(), row->rect().bottomLeft()).y();
            std::vector<int> colored;
            for (int x = 0; x < image.width(); ++x) {
                if (image.pixel(x, y) != background) {
                    colored.push_back(x);
                }
            }
            return colored;
        };
        ASSERT_FALSE(line("a.opus").empty());
        // The separator colour, which has an opacity of 0.2, at half its strength.
        const int y = rowOf("a.opus")->mapTo(area(), rowOf("a.opus")->rect().bottomLeft()).y();
        EXPECT_NEAR(image.pixelColor(200, y).red(),
                    qRed(background) * 0.9 + window_.palette().windowText().color().red() * 0.1, 1);
        const bool isMirrored = direction == Qt::RightToLeft;
        EXPECT_EQ(line("a.opus").front(), isMirrored ? 26 : 26 + 56);
        EXPECT_EQ(line("a.opus").back(), image.width() - 1 - (isMirrored ? 26 + 56 : 26));
        EXPECT_TRUE(line("b.opus").empty());
    }
}

TEST_F(JobListTest, drawsALineInTheFirstAndTheLastVisiblePixelToo) {
    scenario_.addMany(100);
    const JobRow* first = rows().front();
    const QRgb background = window_.palette().color(QPalette::Window).rgb();
    const auto isLine = [&](int y) {
        return area()->viewport()->grab().toImage().pixel(200, y) != background;
    };
    const int bottom = first->geometry().bottom();
    bar()->setValue(bottom);
    settle();
    EXPECT_TRUE(isLine(0));
    bar()->setValue(bottom + 1);
    settle();
    EXPECT_FALSE(isLine(0));
    // The same for the last visible pixel.
    const int last = area()->viewport()->height() - 1;
    const int height = first->height();
    bar()->setValue((bottom + 40 * height - last) % height + 10 * height);
    settle();
    EXPECT_TRUE(isLine(last));
    bar()->setValue(bar()->value() - 1);
    settle();
    EXPECT_FALSE(isLine(last));
}

/// Records the painted regions.
class PaintSpy : public QObject {
  public:
    std::map<QWidget*, QRegion> painted;

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (const auto* paint = dynamic_cast<QPaintEvent*>(event)) {
            painted[qobject_cast<QWidget*>(watched)] += paint->region();
        }
        return false;
    }
};

TEST_F(JobListTest, repaintsNothingButTheBarOnProgress) {
    Gate half;
    scenario_.runner->setScript("a.opus", [&](const auto&, const auto& report) {
        report(0.25);
        half.pass();
        report(0.5);
        scenario_.gate.pass();
    });
    scenario_.add({"a.opus", "b.opus", "c.opus"});
    scenario_.start();
    auto* progress = rowOf("a.opus")->findChild<ProgressBar*>();
    ASSERT_TRUE(test::runUntil([&] { return progress->value() == 250; }));
    settle();
    PaintSpy spy;
    for (QWidget* widget : area()->findChildren<QWidget*>()) {
        widget->installEventFilter(&spy);
    }
    half.open();
    ASSERT_TRUE(test::runUntil([&] { return progress->value() == 500; }));
    settle();
    EXPECT_EQ(spy.painted.count(progress), 1U);
    // The bar's ancestors show through it and are repainted within its rectangle only.
    const QRect place(progress->mapToGlobal(QPoint()), progress->size());
    for (const auto& [widget, region] : spy.painted) {
        EXPECT_TRUE(widget == progress || widget->isAncestorOf(progress));
        const QRect all = region.boundingRect();
        EXPECT_TRUE(place.contains(QRect(widget->mapToGlobal(all.topLeft()), all.size())));
    }
}

} // namespace
} // namespace kestrel
