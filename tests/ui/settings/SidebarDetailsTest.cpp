#include "AppBadge.h"
#include "Corners.h"
#include "Label.h"
#include "MixedColor.h"
#include "PixelArt.h"
#include "PopUpButton.h"
#include "Scenario.h"
#include "SettingsSidebar.h"
#include "StatusDot.h"
#include "TextFont.h"

#include <QApplication>
#include <QImage>
#include <QLinearGradient>
#include <QPainter>

#include <gtest/gtest.h>

#include <cstdlib>

namespace kestrel {
namespace {

/// The sidebar alone in a window.
class SidebarDetailsTest : public ::testing::Test {
  public:
    SidebarDetailsTest(const SidebarDetailsTest&) = delete;
    SidebarDetailsTest& operator=(const SidebarDetailsTest&) = delete;

  protected:
    SidebarDetailsTest() : sidebar_(scenario_.model, [] { return FileURL("/usr/bin/ffmpeg"); }) {
        sidebar_.resize(310, 640);
        EXPECT_TRUE(showActive(sidebar_));
    }

    ~SidebarDetailsTest() override { QApplication::setFont(font_); }

    QRect box(const QWidget* widget) const {
        return {widget->mapTo(&sidebar_, QPoint()), widget->size()};
    }

    QRect box(const char* name) const { return box(find<QWidget>(sidebar_, name)); }

    QRect badge() const { return box(sidebar_.findChild<AppBadge*>()); }

    /// By how much the badge is higher above the middle of the texts beside it than below.
    int badgeOffset() const {
        const QRect texts = box("appTitle") | box("appSubtitle");
        return (texts.top() + texts.bottom()) - (badge().top() + badge().bottom());
    }

    const QFont font_ = QApplication::font();
    Scenario scenario_;
    SettingsSidebar sidebar_;
};

TEST_F(SidebarDetailsTest, centresItsTitleAndItsBadgeBesideEachOther) {
    for (const int size : {13, 40}) {
        QFont font = font_;
        font.setPixelSize(size);
        QApplication::setFont(font);
        settle();
        const bool isTextHigher =
            badge().height() < (box("appTitle") | box("appSubtitle")).height();
        EXPECT_EQ(isTextHigher, size == 40);
        EXPECT_LE(std::abs(badgeOffset()), 1) << size;
        EXPECT_EQ(box("appTitle").right() + 1, 310 - 24);
    }
}

TEST_F(SidebarDetailsTest, placesTheBitDepthBesideItsLabel) {
    const QRect label = box("bitDepthLabel");
    const QRect picker = box(sidebar_.findChild<PopUpButton*>());
    EXPECT_EQ(label.x(), 24);
    EXPECT_EQ(label.width(), find<Label>(sidebar_, "bitDepthLabel")->sizeHint().width());
    EXPECT_EQ(picker.x(), label.right() + 1 + 8);
    EXPECT_EQ(picker.right() + 1, 310 - 24);
    EXPECT_LE(std::abs(picker.center().y() - label.center().y()), 1);
    // Assistive technology finds the label by it.
    EXPECT_EQ(find<Label>(sidebar_, "bitDepthLabel")->buddy(), sidebar_.findChild<PopUpButton*>());
}

TEST_F(SidebarDetailsTest, givesTheStatusTheWidthBesideItsDot) {
    EXPECT_EQ(box("ffmpegStatus").right() + 1, 310 - 24);
    EXPECT_EQ(box("ffmpegStatus").x(), 24 + 7 + 7);
}

TEST_F(SidebarDetailsTest, shadesItsBackgroundFromCornerToCorner) {
    QLinearGradient gradient(QPointF(0, 0), QPointF(310, 640));
    gradient.setColorAt(0, QColor::fromRgbF(0.08F, 0.10F, 0.16F));
    gradient.setColorAt(1, QColor::fromRgbF(0.10F, 0.07F, 0.16F));
    QImage expected(310, 640, QImage::Format_RGB32);
    QPainter(&expected).fillRect(expected.rect(), gradient);
    const QImage shown = sidebar_.grab().toImage().convertToFormat(QImage::Format_RGB32);
    // Nothing is drawn there but the background.
    for (const QRect& part : {QRect(0, 0, 310, 18), QRect(0, 0, 10, 640), QRect(300, 0, 10, 640),
                              QRect(0, 620, 310, 20)}) {
        EXPECT_EQ(shown.copy(part), expected.copy(part)) << part.x() << ' ' << part.y();
    }
}

TEST_F(SidebarDetailsTest, showsTheStatusAsADisc) {
    const auto* dot = sidebar_.findChild<StatusDot*>();
    const QImage shown = sidebar_.grab(box(dot)).toImage();
    const QImage expected = paintedOn(Qt::black, dot->size(), [dot](QPainter& painter) {
        painter.setPen(Qt::NoPen);
        painter.setBrush(dot->color());
        painter.drawEllipse(QRectF(0, 0, 7, 7));
    });
    EXPECT_EQ(pixelArt(shown, shown.pixelColor(0, 0), dot->color()),
              pixelArt(expected, Qt::black, dot->color()));
}

} // namespace
} // namespace kestrel
