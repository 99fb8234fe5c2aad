#include "JobRow.h"

#include "DisplayText.h"
#include "ProgressBar.h"
#include "Scenario.h"
#include "TextFont.h"
#include "Timeout.h"

#include <QLabel>
#include <QLayout>
#include <QPushButton>

#include <gtest/gtest.h>

#include <limits>

namespace kestrel {
namespace {

class JobRowTest : public ::testing::Test {
  protected:
    JobRowTest() : row_(scenario_.model) {
        row_.resize(600, 100);
        row_.setJob(job_);
        row_.show();
        EXPECT_TRUE(QTest::qWaitForWindowExposed(&row_, test::timeout));
    }

    void show(const JobState& state, double progress = 0) {
        job_.state = state;
        job_.progress = progress;
        row_.setJob(job_);
        settle();
    }

    std::string text(const char* name) const { return utf8(find<QLabel>(row_, name)->text()); }

    bool isShown(const char* name) const { return find<QWidget>(row_, name)->isVisible(); }

    const ProgressBar* bar() const { return row_.findChild<ProgressBar*>(); }

    /// The visible ones of the widgets that depend on the state.
    std::string parts() const {
        std::string parts;
        for (const char* name : {"message", "checkMark", "removeButton"}) {
            parts += isShown(name) ? std::string(name) + " " : "";
        }
        return parts + (bar()->isVisible() ? "bar" : "");
    }

    Scenario scenario_;
    ConversionJob job_{FileURL("/home/a/Music/Album/track.opus")};
    JobRow row_;
};

TEST_F(JobRowTest, showsNameAndFolder) {
    EXPECT_EQ(text("name"), "track.opus");
    EXPECT_EQ(text("folder"), "Album");
}

TEST_F(JobRowTest, showsAWaitingJob) {
    EXPECT_EQ(text("state"), "Ready");
    EXPECT_EQ(parts(), "removeButton ");
    EXPECT_EQ(utf8(row_.accessibleName()), "track.opus, in Album, Ready");
}

TEST_F(JobRowTest, showsAConvertingJob) {
    show(JobState::converting(), 0.25);
    EXPECT_EQ(text("state"), "Converting");
    EXPECT_EQ(parts(), "bar");
    EXPECT_EQ(bar()->value() * 4, bar()->maximum());
    EXPECT_EQ(utf8(row_.accessibleName()), "track.opus, in Album, Converting");
}

TEST_F(JobRowTest, showsACompletedJob) {
    show(JobState::completed(), 1);
    EXPECT_EQ(text("state"), "Complete");
    EXPECT_EQ(parts(), "checkMark ");
    EXPECT_EQ(utf8(row_.accessibleName()), "track.opus, in Album, Complete");
}

TEST_F(JobRowTest, showsACancelledJob) {
    show(JobState::cancelled(), 0.5);
    EXPECT_EQ(text("state"), "Cancelled");
    EXPECT_EQ(parts(), "removeButton ");
    EXPECT_EQ(utf8(row_.accessibleName()), "track.opus, in Album, Cancelled");
}

TEST_F(JobRowTest, showsAFailedJobWithItsMessage) {
    show(JobState::failed("first line\nsecond <b>line</b>"), 0.5);
    EXPECT_EQ(text("state"), "Failed");
    EXPECT_EQ(text("message"), "first line\nsecond <b>line</b>");
    EXPECT_EQ(parts(), "message removeButton ");
    EXPECT_EQ(utf8(row_.accessibleName()),
              "track.opus, in Album, Failed, first line second <b>line</b>");
}

TEST_F(JobRowTest, saysTheLastLineOfALongMessage) {
    show(JobState::failed("first line\n" + std::string(100'000, 'x') + "\nlast line"));
    EXPECT_TRUE(row_.accessibleName().endsWith(QStringLiteral("x last line")));
    EXPECT_TRUE(row_.accessibleName().startsWith(
        QStringLiteral("track.opus, in Album, Failed, first line x")));
}

TEST_F(JobRowTest, keepsALineForAnEmptyMessage) {
    show(JobState::failed(""));
    EXPECT_EQ(parts(), "message removeButton ");
    const auto* message = find<QWidget>(row_, "message");
    EXPECT_EQ(message->height(), lineHeight(message->font()));
    EXPECT_EQ(utf8(row_.accessibleName()), "track.opus, in Album, Failed");
}

TEST_F(JobRowTest, hidesTheWidgetsOfThePreviousState) {
    show(JobState::failed("message"));
    show(JobState::converting(), 0.1);
    show(JobState::waiting());
    EXPECT_EQ(text("state"), "Ready");
    EXPECT_EQ(parts(), "removeButton ");
}

TEST_F(JobRowTest, clampsProgress) {
    show(JobState::converting(), -0.5);
    EXPECT_EQ(bar()->value(), 0);
    show(JobState::converting(), 7);
    EXPECT_EQ(bar()->value(), bar()->maximum());
    show(JobState::converting(), std::numeric_limits<double>::quiet_NaN());
    EXPECT_EQ(bar()->value(), 0);
}

TEST_F(JobRowTest, showsANameWithLineBreaksOnOneLine) {
    row_.setJob(ConversionJob(FileURL("/Al\nbum/tr\nack.opus")));
    EXPECT_EQ(text("name"), "tr\uFFFDack.opus");
    EXPECT_EQ(text("folder"), "Al\uFFFDbum");
}

TEST_F(JobRowTest, showsMarkupInNamesLiterally) {
    row_.setJob(ConversionJob(FileURL("/<i>A&B/<b>bold & more.opus")));
    EXPECT_EQ(text("name"), "<b>bold & more.opus");
    EXPECT_EQ(text("folder"), "<i>A&B");
    EXPECT_EQ(find<QLabel>(row_, "name")->textFormat(), Qt::PlainText);
    EXPECT_EQ(find<QLabel>(row_, "folder")->textFormat(), Qt::PlainText);
    EXPECT_EQ(find<QLabel>(row_, "message")->textFormat(), Qt::PlainText);
}

TEST_F(JobRowTest, removesItsJobOnly) {
    scenario_.add({"a.opus", "b.opus", "c.opus"});
    row_.setJob(scenario_.model->jobs()[1]);
    QTest::mouseClick(find<QPushButton>(row_, "removeButton"), Qt::LeftButton);
    ASSERT_EQ(scenario_.model->jobs().size(), 2U);
    EXPECT_EQ(scenario_.model->jobs()[0].source().lastPathComponent(), "a.opus");
    EXPECT_EQ(scenario_.model->jobs()[1].source().lastPathComponent(), "c.opus");
}

TEST_F(JobRowTest, namesItsJobInTheRemoveButton) {
    EXPECT_EQ(utf8(find<QPushButton>(row_, "removeButton")->accessibleName()), "Remove track.opus");
}

TEST_F(JobRowTest, exposesItsPosition) {
    row_.setPosition(2, 120);
    EXPECT_EQ(utf8(row_.accessibleDescription()), "3 of 120");
    EXPECT_EQ(utf8(find<QPushButton>(row_, "removeButton")->accessibleDescription()), "3 of 120");
}

TEST_F(JobRowTest, givesEveryRowTheHeightOfAConvertingOne) {
    const QFont original = QApplication::font();
    for (const double factor : {1.0, 1.5}) {
        QFont font = original;
        font.setPointSizeF(original.pointSizeF() * factor);
        QApplication::setFont(font);
        const JobRowMetrics metrics = JobRow::measure(scenario_.model, nullptr, 600);
        JobRow row(scenario_.model);
        ConversionJob job{FileURL("/Album/a.opus")};
        job.state = JobState::converting();
        row.setJob(job);
        EXPECT_EQ(metrics.plainHeight, row.sizeHint().height()) << factor;
        EXPECT_GE(metrics.plainHeight, 7 + 42 + 7);
    }
    QApplication::setFont(original);
}

TEST_F(JobRowTest, startsItsTextsAtTheirIndent) {
    EXPECT_EQ(find<QWidget>(row_, "badge")->x(), JobRow::overhang);
    EXPECT_EQ(find<QLabel>(row_, "name")->x(), JobRow::overhang + JobRow::textIndent);
}

TEST_F(JobRowTest, isolatesANameWithADirectionalOverride) {
    const QString name = QStringLiteral("a\u202Eb.opus");
    row_.setJob(ConversionJob(FileURL("/Album/" + utf8(name))));
    EXPECT_EQ(utf8(row_.accessibleName()), utf8(isolated(name)) + ", in Album, Ready");
    EXPECT_NE(isolated(name), name);
}

TEST_F(JobRowTest, laysOutTheProgressBarWithoutTheButtonThatItReplaces) {
    job_.state = JobState::converting();
    row_.setJob(job_);
    const int width = bar()->width();
    settle();
    EXPECT_EQ(width, bar()->width());
}

} // namespace
} // namespace kestrel
