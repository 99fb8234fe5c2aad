#include "SymbolView.h"

#include "Scenario.h"
#include "SymbolPlaces.h"
#include "TextFont.h"

#include <QApplication>
#include <QHBoxLayout>
#include <QImage>

#include <gtest/gtest.h>

namespace kestrel {
namespace {

/// A view in the layout of a white window.
class SymbolViewTest : public ::testing::Test {
  public:
    SymbolViewTest(const SymbolViewTest&) = delete;
    SymbolViewTest& operator=(const SymbolViewTest&) = delete;

  protected:
    SymbolViewTest() {
        window_.setPalette(QPalette(QColor(Qt::white)));
        row_.setContentsMargins(0, 0, 0, 0);
        row_.addWidget(&view_);
        row_.addStretch(1);
        window_.resize(200, side() + 40);
        layOut();
    }

    ~SymbolViewTest() override { QApplication::setFont(font_); }

    void layOut() { row_.activate(); }

    static int side() { return symbolSize(TextFont{}.font()); }

    /// Where the symbol is in its view.
    QRect place() {
        const QColor purple = ThemeColor(ThemeColor::Name::purple).color(window_.palette());
        const QImage image = window_.grab(view_.geometry()).toImage();
        return placeOf(Symbol::folderFill, side(), purple, image);
    }

    const QFont font_ = QApplication::font();
    QWidget window_;
    QHBoxLayout row_{&window_};
    SymbolView view_{Symbol::folderFill, {}, ThemeColor::Name::purple, &window_};
};

TEST_F(SymbolViewTest, isAsWideAsItsSymbolWhichIsInTheMiddle) {
    EXPECT_EQ(view_.sizeHint(), QSize(side(), side()));
    EXPECT_EQ(view_.minimumSizeHint(), view_.sizeHint());
    EXPECT_EQ(view_.size(), QSize(side(), side() + 40));
    EXPECT_EQ(place(), QRect(0, 20, side(), side()));
}

TEST_F(SymbolViewTest, roundsTheMiddleToWholePixels) {
    view_.resize(side() + 20, side() + 30);
    EXPECT_EQ(place().topLeft(), QPoint(10, 15));
    view_.resize(side() + 21, side() + 31);
    EXPECT_EQ(place().topLeft(), QPoint(11, 16));
}

TEST_F(SymbolViewTest, leavesTheInsetAtItsTrailingEdge) {
    view_.setTrailingInset(7);
    layOut();
    EXPECT_EQ(view_.width(), side() + 7);
    EXPECT_EQ(place().x(), 0);
    view_.setLayoutDirection(Qt::RightToLeft);
    EXPECT_EQ(place().x(), 7);
}

TEST_F(SymbolViewTest, growsWithTheApplicationFont) {
    const int before = view_.width();
    QFont large = font_;
    large.setPixelSize(pixelSize(font_) * 2);
    QApplication::setFont(large);
    settle();
    layOut();
    EXPECT_GT(view_.width(), before);
    EXPECT_EQ(view_.width(), side());
}

} // namespace
} // namespace kestrel
