#include "ContinuousRectangle.h"
#include "Corners.h"
#include "FocusRing.h"
#include "JobRow.h"
#include "Scenario.h"
#include "ThemeColor.h"

#include <QImage>
#include <QPainter>

#include <gtest/gtest.h>

namespace kestrel {
namespace {

/// A row in a white window.
class JobRowDetailsTest : public ::testing::Test {
  protected:
    JobRowDetailsTest() : row_(scenario_.model, &window_) {
        window_.setPalette(QPalette(QColor(Qt::black), QColor(Qt::white)));
        window_.resize(500, 100);
        row_.setGeometry(0, 0, 500, 70);
        row_.setJob(ConversionJob(FileURL("/Album/track.opus")));
        EXPECT_TRUE(showActive(window_));
    }

    QColor purple() const { return ThemeColor(ThemeColor::Name::purple).color(window_.palette()); }

    Scenario scenario_;
    QWidget window_;
    JobRow row_;
};

TEST_F(JobRowDetailsTest, hasAPaleBadgeWithRoundCorners) {
    const auto* badge = find<QWidget>(row_, "badge");
    const QRect place(badge->mapTo(&window_, QPoint()), badge->size());
    ASSERT_EQ(place.size(), QSize(42, 42));
    QColor pale = purple();
    pale.setAlphaF(0.11F);
    const QImage expected = paintedOn(Qt::white, place.size(), [&pale](QPainter& painter) {
        painter.setPen(Qt::NoPen);
        painter.setBrush(pale);
        painter.drawPath(continuousRectangle(QRectF(0, 0, 42, 42), 9));
    });
    EXPECT_TRUE(haveEqualCorners(window_.grab(place).toImage(), expected, 9));
}

TEST_F(JobRowDetailsTest, hasARingWithRoundCornersForKeyboardFocus) {
    row_.setFocus(Qt::TabFocusReason);
    QTest::keyClick(&row_, Qt::Key_Shift);
    const QImage expected = paintedOn(Qt::white, row_.size(), [this](QPainter& painter) {
        drawFocusRing(painter, QRectF(0, 0, 500, 70), 9, purple());
    });
    EXPECT_TRUE(haveEqualCorners(window_.grab(row_.geometry()).toImage(), expected, 9));
}

TEST_F(JobRowDetailsTest, centresItsLastElementBesideTheBadge) {
    const auto middleOf = [this](const char* name) {
        return find<QWidget>(row_, name)->geometry().center().y();
    };
    EXPECT_NEAR(middleOf("removeButton"), middleOf("badge"), 1);
    ConversionJob complete(FileURL("/Album/track.opus"));
    complete.state = JobState::completed();
    row_.setJob(complete);
    settle();
    ASSERT_TRUE(find<QWidget>(row_, "checkMark")->isVisible());
    EXPECT_NEAR(middleOf("checkMark"), middleOf("badge"), 1);
}

TEST_F(JobRowDetailsTest, namesItsCheckMark) {
    EXPECT_EQ(utf8(find<QWidget>(row_, "checkMark")->accessibleName()), "Complete");
}

} // namespace
} // namespace kestrel
