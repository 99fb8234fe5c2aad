#include "ContentScroller.h"
#include "ContentView.h"
#include "JobRow.h"
#include "MainWindowFixture.h"
#include "TextFont.h"

#include <QGuiApplication>
#include <QLabel>
#include <QScreen>
#include <QScrollBar>
#include <QWheelEvent>
#include <QWindow>

#include <gmock/gmock.h>

namespace kestrel {
namespace {

using ::testing::ElementsAre;

/// The window in a size, or on a screen, that is too small for its contents.
class SmallWindowTest : public MainWindowFixture {
  protected:
    ContentView& contents() { return *window_.findChild<ContentView*>(); }

    ContentScroller& scroller() { return *window_.findChild<ContentScroller*>(); }

    /// The scroll bar of the contents, or null if it is not shown.
    QScrollBar* bar(Qt::Orientation orientation) {
        for (auto* bar : scroller().findChildren<QScrollBar*>(Qt::FindDirectChildrenOnly)) {
            if (bar->isVisible() && bar->orientation() == orientation) {
                return bar;
            }
        }
        return nullptr;
    }

    /// Makes the window system set this size for good, as on a small screen.
    void force(QSize size) {
        window_.available = size;
        Q_EMIT window_.screen()->availableGeometryChanged({});
        QWindow& handle = *window_.windowHandle();
        handle.setMinimumSize({1, 1});
        handle.setMaximumSize(size);
        handle.resize(size);
        ASSERT_TRUE(test::runUntil([this, size] { return window_.size() == size; }));
        settle();
    }

    /// Turns the wheel over a part that does not scroll itself.
    void wheel(QPoint angle) {
        const QPoint center = scroller().rect().center();
        QWheelEvent event(center, scroller().mapToGlobal(center), {}, angle, Qt::NoButton,
                          Qt::NoModifier, Qt::NoScrollPhase, false);
        QApplication::sendEvent(&scroller(), &event);
    }

    /// Where the focus widget is visible, in the window.
    QRect visibleFocus() {
        const QWidget* focus = QApplication::focusWidget();
        return focus != nullptr ? focus->visibleRegion().boundingRect().translated(
                                      focus->mapTo(&window_, QPoint()))
                                : QRect();
    }
};

TEST_F(SmallWindowTest, hasNoScrollBarWhereTheContentsFit) {
    EXPECT_EQ(scroller().geometry(), window_.rect());
    EXPECT_EQ(contents().geometry(), window_.rect());
    EXPECT_TRUE(scroller().findChildren<QScrollBar*>(Qt::FindDirectChildrenOnly).isEmpty());
    EXPECT_TRUE(titleBar().isOverContents());
}

TEST_F(SmallWindowTest, scrollsItsContentsBelowTheTitleBar) {
    force({640, 480});
    EXPECT_EQ(titleBar().geometry(), QRect(0, 0, 640, 28));
    EXPECT_TRUE(titleBar().rect().contains(closeButton().geometry()));
    EXPECT_EQ(scroller().geometry(), QRect(0, 28, 640, 452));
    // The title bar has its part of the height already.
    EXPECT_EQ(contents().geometry(), QRect(0, 0, 960, 640 - 28));
    ASSERT_NE(bar(Qt::Horizontal), nullptr);
    ASSERT_NE(bar(Qt::Vertical), nullptr);
    EXPECT_EQ(bar(Qt::Horizontal)->geometry(), QRect(0, 440, 628, 12));
    EXPECT_EQ(bar(Qt::Vertical)->geometry(), QRect(628, 0, 12, 440));
    bar(Qt::Horizontal)->setValue(bar(Qt::Horizontal)->maximum());
    bar(Qt::Vertical)->setValue(bar(Qt::Vertical)->maximum());
    EXPECT_EQ(contents().geometry().bottomRight(), QPoint(627, 439));
    EXPECT_EQ(bar(Qt::Horizontal)->pageStep(), 628);
    EXPECT_EQ(bar(Qt::Vertical)->pageStep(), 440);
}

TEST_F(SmallWindowTest, scrollsFurtherWhenItsContentsGrow) {
    force({640, 480});
    const int before = bar(Qt::Vertical)->maximum();
    const QFont font = QApplication::font();
    QFont large = font;
    large.setPixelSize(pixelSize(font) * 5);
    QApplication::setFont(large);
    EXPECT_TRUE(test::runUntil([&] { return bar(Qt::Vertical)->maximum() > before; }));
    EXPECT_EQ(window_.minimumSize(), QSize(640, 480));
    QApplication::setFont(font);
}

TEST_F(SmallWindowTest, hasAScrollStepOfTwentyPoints) {
    force({640, 480});
    EXPECT_EQ(bar(Qt::Horizontal)->singleStep(), 20);
    EXPECT_EQ(bar(Qt::Vertical)->singleStep(), 20);
}

TEST_F(SmallWindowTest, scrollsOnlyDownWhereTheWidthFits) {
    force({1093, 614});
    EXPECT_EQ(bar(Qt::Horizontal), nullptr);
    ASSERT_NE(bar(Qt::Vertical), nullptr);
    EXPECT_EQ(contents().width(), 1093 - 12);
}

TEST_F(SmallWindowTest, scrollsSidewaysToWhatItsScrollBarTakes) {
    force({965, 600});
    ASSERT_NE(bar(Qt::Vertical), nullptr);
    ASSERT_NE(bar(Qt::Horizontal), nullptr);
    EXPECT_EQ(bar(Qt::Horizontal)->maximum(), 960 - (965 - 12));
}

TEST_F(SmallWindowTest, scrollsOnlySidewaysWhereTheHeightFits) {
    force({900, 700});
    ASSERT_NE(bar(Qt::Horizontal), nullptr);
    EXPECT_EQ(bar(Qt::Vertical), nullptr);
}

TEST_F(SmallWindowTest, endsScrollingWhereTheContentsFitAgain) {
    force({640, 480});
    bar(Qt::Vertical)->setValue(100);
    force({1000, 700});
    EXPECT_EQ(bar(Qt::Vertical), nullptr);
    EXPECT_EQ(bar(Qt::Horizontal), nullptr);
    EXPECT_EQ(contents().geometry(), window_.rect());
    EXPECT_TRUE(titleBar().isOverContents());
}

TEST_F(SmallWindowTest, hasADarkTitleBarOfItsOwnWhileItScrolls) {
    force({640, 480});
    bar(Qt::Horizontal)->setValue(bar(Qt::Horizontal)->maximum());
    const QImage image = window_.grab().toImage();
    EXPECT_LT(image.pixelColor(60, 4).lightness(), 50);
    EXPECT_LT(image.pixelColor(500, 14).lightness(), 50);
    EXPECT_EQ(closeButton().palette().color(QPalette::WindowText), QColor(Qt::white));
}

TEST_F(SmallWindowTest, scrollsByTheWheel) {
    force({640, 480});
    wheel({0, -120});
    const int down = bar(Qt::Vertical)->value();
    EXPECT_GT(down, 0);
    EXPECT_EQ(bar(Qt::Horizontal)->value(), 0);
    wheel({-120, 0});
    EXPECT_GT(bar(Qt::Horizontal)->value(), 0);
    EXPECT_EQ(bar(Qt::Vertical)->value(), down);
}

TEST_F(SmallWindowTest, showsEveryControlThatTabReaches) {
    scenario_.addMany(30);
    settle();
    force({640, 480});
    const QRect area(0, 28, 628, 440);
    std::vector<QWidget*> seen;
    for (QWidget* first = nullptr; QApplication::focusWidget() != first;) {
        first = first != nullptr ? first : QApplication::focusWidget();
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        settle();
        QWidget* focus = QApplication::focusWidget();
        seen.push_back(focus);
        if (titleBar().isAncestorOf(focus)) {
            EXPECT_EQ(visibleFocus().size(), focus->size());
        } else {
            EXPECT_TRUE(area.contains(visibleFocus())) << utf8(focus->accessibleName());
            EXPECT_EQ(visibleFocus().size(), focus->size()) << utf8(focus->accessibleName());
        }
        ASSERT_LT(seen.size(), 50U);
    }
    EXPECT_GE(seen.size(), 11U);
}

TEST_F(SmallWindowTest, showsEveryRowThatTheKeysReach) {
    scenario_.addMany(30);
    settle();
    force({640, 480});
    auto* row = window_.findChild<JobRow*>();
    row->setFocus();
    settle();
    for (const Qt::Key key : {Qt::Key_End, Qt::Key_Up, Qt::Key_Home, Qt::Key_Down}) {
        QTest::keyClick(QApplication::focusWidget(), key);
        settle();
        EXPECT_EQ(visibleFocus().size(), QApplication::focusWidget()->size()) << key;
    }
}

TEST_F(SmallWindowTest, startsAtItsRightSideInARightToLeftLayout) {
    force({640, 480});
    QApplication::setLayoutDirection(Qt::RightToLeft);
    settle();
    EXPECT_EQ(bar(Qt::Vertical)->geometry().left(), 0);
    EXPECT_EQ(contents().geometry(), QRect(628 - 960, 0, 960, 612));
    EXPECT_EQ(contents().mapTo(&window_, QPoint(960, 0)).x(), 640);
    bar(Qt::Horizontal)->setValue(bar(Qt::Horizontal)->maximum());
    EXPECT_EQ(contents().mapTo(&window_, QPoint()).x(), 12);
}

TEST_F(SmallWindowTest, isAsLargeAsASmallScreen) {
    RecordingWindow window(scenario_.model);
    window.available = QSize(800, 600);
    ASSERT_TRUE(showActive(window));
    EXPECT_TRUE(test::runUntil([&] { return window.size() == QSize(800, 600); }));
    EXPECT_EQ(window.minimumSize(), QSize(800, 600));
}

TEST_F(SmallWindowTest, fillsAScreenThatLacksRoomInOneDirection) {
    RecordingWindow window(scenario_.model);
    window.available = QSize(1093, 614);
    ASSERT_TRUE(showActive(window));
    EXPECT_TRUE(test::runUntil([&] { return window.size() == QSize(1093, 614); }));
    EXPECT_THAT(window.sizes, ElementsAre());
}

TEST_F(SmallWindowTest, keepsItsMinimumOnALargeScreen) {
    EXPECT_EQ(window_.minimumSize(), QSize(960, 640));
    window_.available = QSize(961, 641);
    Q_EMIT window_.screen()->availableGeometryChanged({});
    EXPECT_EQ(window_.minimumSize(), QSize(960, 640));
    settle();
    EXPECT_THAT(window_.sizes, ElementsAre());
}

TEST_F(SmallWindowTest, followsAScreenThatGetsSmaller) {
    window_.available = QSize(1024, 600);
    Q_EMIT window_.screen()->availableGeometryChanged({});
    EXPECT_EQ(window_.minimumSize(), QSize(960, 600));
    ASSERT_EQ(window_.sizes.size(), 1U);
    EXPECT_LE(window_.sizes[0].width(), 1024);
    EXPECT_EQ(window_.sizes[0].height(), 600);
    EXPECT_TRUE(test::runUntil([this] { return window_.height() == 600; }));
    EXPECT_NE(bar(Qt::Vertical), nullptr);
}

} // namespace
} // namespace kestrel
