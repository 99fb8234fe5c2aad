#include "Alert.h"

#include "AppBadge.h"
#include "Button.h"
#include "ContinuousRectangle.h"
#include "Corners.h"
#include "Label.h"
#include "RunUntil.h"
#include "Scenario.h"
#include "TextFont.h"
#include "ThemeColor.h"

#include <QApplication>
#include <QFontMetrics>
#include <QImage>
#include <QLayout>

#include <gtest/gtest.h>

#include <cstdlib>

namespace kestrel {
namespace {

/// An alert over a window.
class AlertTest : public ::testing::Test {
  public:
    AlertTest(const AlertTest&) = delete;
    AlertTest& operator=(const AlertTest&) = delete;

  protected:
    AlertTest() {
        window_.resize(700, 500);
        EXPECT_TRUE(showActive(window_));
        alert_.setMessage(QStringLiteral("Choose an output folder first."));
        alert_.show();
        EXPECT_TRUE(waitUntilShown(alert_));
        settle();
    }

    ~AlertTest() override { QApplication::setFont(font_); }

    QRect badge() const { return alert_.findChild<AppBadge*>()->geometry(); }

    QRect headline() const { return find<Label>(alert_, "alertHeadline")->geometry(); }

    const Label& message() const { return *find<Label>(alert_, "alertMessage"); }

    QRect button() const { return alert_.findChild<Button*>()->geometry(); }

    /// Of lines of this many characters of a mean width.
    int widthOf(int characters) const {
        return characters * message().fontMetrics().averageCharWidth();
    }

    void show(const QString& text) {
        alert_.setMessage(text);
        alert_.adjustSize();
        settle();
        waitForLayout();
    }

    /// Waits until the X server has confirmed the last size; it may confirm earlier ones first, and
    /// Qt follows.
    void waitForLayout() {
        const auto isDone = [this] { return alert_.size() == alert_.layout()->totalSizeHint(); };
        EXPECT_TRUE(test::runUntil(isDone));
    }

    static int end(const QRect& rect) { return rect.x() + rect.width(); }

    static int bottom(const QRect& rect) { return rect.y() + rect.height(); }

    const QFont font_ = QApplication::font();
    QWidget window_;
    Alert alert_{&window_};
};

TEST_F(AlertTest, laysOutItsPartsWithMargins) {
    EXPECT_EQ(badge(), QRect(24, 24, 44, 44));
    EXPECT_EQ(headline().x(), 24 + 44 + 16);
    EXPECT_EQ(message().x(), headline().x());
    EXPECT_EQ(message().y(), bottom(headline()) + 6);
    EXPECT_EQ(alert_.width(), end(message().geometry()) + 24);
    EXPECT_EQ(button().y(), bottom(badge()) + 20);
    EXPECT_EQ(alert_.height(), bottom(button()) + 20);
    EXPECT_EQ(end(button()), alert_.width() - 24);
    EXPECT_EQ(button().width(), 56 + 2 * 13);
}

TEST_F(AlertTest, centresAShortTextBesideItsBadge) {
    ASSERT_LT(bottom(message().geometry()) - headline().y(), badge().height());
    const int above = headline().y() - badge().y();
    const int below = bottom(badge()) - bottom(message().geometry());
    EXPECT_LE(std::abs(above - below), 1);
}

TEST_F(AlertTest, keepsItsBadgeAtTheTopBesideALongText) {
    show(QStringLiteral("one sentence after the other ").repeated(20));
    EXPECT_EQ(badge().y(), 24);
    EXPECT_EQ(headline().y(), 24);
    EXPECT_EQ(button().y(), bottom(message().geometry()) + 20);
    EXPECT_EQ(alert_.height(), bottom(button()) + 20);
}

TEST_F(AlertTest, wrapsAt44CharactersAndIsHalfAsWideAtLeast) {
    show(QStringLiteral("no"));
    EXPECT_EQ(message().width(), widthOf(44) / 2);
    show(QString(30, u'n'));
    EXPECT_EQ(message().width(), message().sizeHint().width());
    show(QStringLiteral("one sentence after the other ").repeated(9));
    EXPECT_EQ(message().width(), widthOf(44));
    EXPECT_EQ(message().height(), message().heightForWidth(message().width()));
    show(QString(300, u'n'));
    EXPECT_EQ(message().width(), message().minimumSizeHint().width());
}

TEST_F(AlertTest, followsTheApplicationFont) {
    show(QStringLiteral("one sentence after the other ").repeated(9));
    const int before = message().width();
    QFont large = font_;
    large.setPixelSize(pixelSize(font_) * 2);
    QApplication::setFont(large);
    settle();
    waitForLayout();
    EXPECT_GT(message().width(), before);
    EXPECT_EQ(message().width(), widthOf(44));
}

TEST_F(AlertTest, hasAHeadlineInBoldTitle3) {
    const QFont expected = TextFont{TextStyle::title3, QFont::Bold}.font();
    EXPECT_EQ(find<Label>(alert_, "alertHeadline")->font(), expected);
    EXPECT_EQ(message().font(), TextFont{}.font());
}

TEST_F(AlertTest, cannotBeResized) {
    EXPECT_EQ(alert_.minimumSize(), alert_.size());
    EXPECT_EQ(alert_.maximumSize(), alert_.size());
}

TEST_F(AlertTest, staysWhereItIsWhenItIsShownAgain) {
    const QPoint place = alert_.pos() + QPoint(40, 30);
    alert_.move(place);
    alert_.show();
    EXPECT_EQ(alert_.pos(), place);
}

TEST_F(AlertTest, hasALineAroundAndRoundCornersWhereTheyAreBlended) {
    const QColor outside(Qt::yellow);
    const auto picture = [&] {
        return paintedOn(outside, alert_.size(), [this](QPainter& painter) {
            alert_.render(&painter, {}, {}, QWidget::DrawChildren);
        });
    };
    const QRectF outline = QRectF(alert_.rect()).adjusted(0.5, 0.5, -0.5, -0.5);
    for (const bool isBlended : {true, false}) {
        alert_.setAttribute(Qt::WA_TranslucentBackground, isBlended);
        const QImage expected = paintedOn(outside, alert_.size(), [&](QPainter& painter) {
            painter.setPen(separatorColor(alert_.palette()));
            painter.setBrush(alert_.palette().window());
            painter.drawPath(continuousRectangle(outline, isBlended ? 12 : 0));
        });
        EXPECT_TRUE(haveEqualCorners(picture(), expected, 24)) << isBlended;
    }
}

} // namespace
} // namespace kestrel
