#include "ResizeHandle.h"

#include "MainWindowFixture.h"
#include "RunUntil.h"

#include <gmock/gmock.h>

#include <algorithm>

namespace kestrel {
namespace {

using ::testing::ElementsAre;

class ResizeHandleTest : public MainWindowFixture {
  protected:
    QList<ResizeHandle*> handles() { return window_.findChildren<ResizeHandle*>(); }

    void expectToResize(QPoint place, Qt::Edges edges, Qt::CursorShape cursor) {
        const auto* handle = dynamic_cast<ResizeHandle*>(window_.childAt(place));
        ASSERT_NE(handle, nullptr);
        EXPECT_EQ(handle->cursor().shape(), cursor);
        window_.resizes.clear();
        click(place);
        EXPECT_THAT(window_.resizes, ElementsAre(edges));
    }

    int visibleHandles() {
        const auto all = handles();
        return static_cast<int>(
            std::count_if(all.begin(), all.end(),
                          [](const ResizeHandle* handle) { return handle->isVisible(); }));
    }
};

TEST_F(ResizeHandleTest, resizesAtEachEdge) {
    const QPoint middle = window_.rect().center();
    const int right = window_.width() - 1;
    const int bottom = window_.height() - 1;
    expectToResize({0, middle.y()}, Qt::LeftEdge, Qt::SizeHorCursor);
    expectToResize({right, middle.y()}, Qt::RightEdge, Qt::SizeHorCursor);
    expectToResize({middle.x(), 0}, Qt::TopEdge, Qt::SizeVerCursor);
    expectToResize({middle.x(), bottom}, Qt::BottomEdge, Qt::SizeVerCursor);
}

TEST_F(ResizeHandleTest, resizesAtEachCorner) {
    const int right = window_.width() - 1;
    const int bottom = window_.height() - 1;
    // At the corner, and along either edge.
    for (const QPoint offset : {QPoint(1, 1), QPoint(11, 1), QPoint(1, 11)}) {
        const int x = offset.x();
        const int y = offset.y();
        expectToResize({x, y}, Qt::TopEdge | Qt::LeftEdge, Qt::SizeFDiagCursor);
        expectToResize({right - x, y}, Qt::TopEdge | Qt::RightEdge, Qt::SizeBDiagCursor);
        expectToResize({x, bottom - y}, Qt::BottomEdge | Qt::LeftEdge, Qt::SizeBDiagCursor);
        expectToResize({right - x, bottom - y}, Qt::BottomEdge | Qt::RightEdge,
                       Qt::SizeFDiagCursor);
    }
}

TEST_F(ResizeHandleTest, leavesClicksInsideTheCornersToTheButtons) {
    EXPECT_EQ(window_.childAt(window_.width() - 6, 6), &closeButton());
}

TEST_F(ResizeHandleTest, followsTheWindowSize) {
    window_.resize(1100, 700);
    ASSERT_TRUE(test::runUntil([this] { return window_.width() == 1100; }));
    settle();
    expectToResize({1099, 300}, Qt::RightEdge, Qt::SizeHorCursor);
    expectToResize({600, 699}, Qt::BottomEdge, Qt::SizeVerCursor);
}

TEST_F(ResizeHandleTest, resizesByTheLeftButtonAlone) {
    QTest::mouseClick(window_.windowHandle(), Qt::RightButton, {}, {0, 300});
    EXPECT_TRUE(window_.resizes.empty());
}

TEST_F(ResizeHandleTest, isHiddenWhileMaximisedOrFullScreen) {
    EXPECT_EQ(visibleHandles(), 8);
    maximise();
    EXPECT_EQ(visibleHandles(), 0);
    window_.showNormal();
    ASSERT_TRUE(waitForMaximised(false));
    EXPECT_EQ(visibleHandles(), 8);
    window_.showFullScreen();
    ASSERT_TRUE(test::runUntil([this] { return window_.width() > 1200; }));
    EXPECT_EQ(visibleHandles(), 0);
}

TEST_F(ResizeHandleTest, isOnTopAndTakesNoFocus) {
    const auto& children = window_.children();
    for (ResizeHandle* handle : handles()) {
        EXPECT_GT(children.indexOf(handle), children.indexOf(&titleBar()));
        EXPECT_EQ(handle->focusPolicy(), Qt::NoFocus);
    }
}

TEST_F(ResizeHandleTest, isFivePixelsThickAndTwelveLongAtTheCorners) {
    const int right = window_.width() - 1;
    const int bottom = window_.height() - 1;
    for (int across = 0; across < 20; ++across) {
        for (int down = 0; down < 20; ++down) {
            const bool isHandle = across < 5 || down < 5;
            const bool isCorner = isHandle && across < 12 && down < 12;
            for (const QPoint place :
                 {QPoint(across, down), QPoint(right - across, down), QPoint(across, bottom - down),
                  QPoint(right - across, bottom - down)}) {
                const auto* handle = dynamic_cast<ResizeHandle*>(window_.childAt(place));
                ASSERT_EQ(handle != nullptr, isHandle) << place.x() << ' ' << place.y();
                if (isHandle) {
                    const Qt::CursorShape shape = handle->cursor().shape();
                    EXPECT_EQ(shape == Qt::SizeFDiagCursor || shape == Qt::SizeBDiagCursor,
                              isCorner)
                        << place.x() << ' ' << place.y();
                }
            }
        }
    }
}

} // namespace
} // namespace kestrel
