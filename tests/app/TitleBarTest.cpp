#include "TitleBar.h"

#include "MainWindowFixture.h"
#include "RunUntil.h"
#include "ThemeColor.h"

#include <QCursor>
#include <QImage>
#include <QMouseEvent>

#include <optional>
#include <ostream>
#include <string>

namespace kestrel {
namespace {

class TitleBarTest : public MainWindowFixture {
  protected:
    /// Sends a mouse move to the title bar, at this offset from the drag point, with these buttons
    /// down.
    void moveBy(QPoint offset, Qt::MouseButtons buttons) {
        const QPointF place = dragPoint() + offset;
        QMouseEvent event(QEvent::MouseMove, place, titleBar().mapToGlobal(place), Qt::NoButton,
                          buttons, {});
        QApplication::sendEvent(&titleBar(), &event);
    }

    /// Moves the pointer near the button's centre. Qt ignores a move to the position that it last
    /// saw, which is that of the last event that a test sent: a button's centre.
    void pointAt(QWidget& button) {
        QCursor::setPos(window_.mapToGlobal(middleOf(button) + QPoint(3, 0)));
    }

    void press(Qt::MouseButton button) { QTest::mousePress(&titleBar(), button, {}, dragPoint()); }

    void release(Qt::MouseButton button) {
        QTest::mouseRelease(&titleBar(), button, {}, dragPoint());
    }
};

TEST_F(TitleBarTest, placesTheMenuBarAndTheButtonsAtItsEnds) {
    EXPECT_EQ(closeButton().geometry(), QRect(window_.width() - 36, 0, 36, 28));
    EXPECT_EQ(minimiseButton().geometry(), QRect(window_.width() - 108, 0, 36, 28));
    EXPECT_EQ(titleBar().menuBar().height(), 28);
    EXPECT_LT(titleBar().menuBar().geometry().right(), 100);
    EXPECT_EQ(utf8(minimiseButton().accessibleName()), "Minimise");
    EXPECT_EQ(utf8(minimiseButton().toolTip()), "Minimise");
    EXPECT_EQ(utf8(closeButton().accessibleName()), "Close");
    EXPECT_EQ(utf8(closeButton().toolTip()), "Close");
}

struct Activation {
    const char* name;
    /// None for the mouse.
    std::optional<Qt::Key> key;

    friend std::ostream& operator<<(std::ostream& out, const Activation& row) {
        return out << row.name;
    }
};

class WindowButtonTest : public TitleBarTest, public ::testing::WithParamInterface<Activation> {
  protected:
    /// With the mouse or the key of this row.
    void pressButton(QWidget& button) {
        if (!GetParam().key) {
            click(middleOf(button));
            return;
        }
        button.setFocus(Qt::TabFocusReason);
        QTest::keyClick(&button, *GetParam().key);
    }
};

TEST_P(WindowButtonTest, maximisesAndRestores) {
    pressButton(maximiseButton());
    EXPECT_TRUE(waitForMaximised(true));
    EXPECT_EQ(utf8(maximiseButton().accessibleName()), "Restore");
    EXPECT_EQ(utf8(maximiseButton().toolTip()), "Restore");
    pressButton(maximiseButton());
    EXPECT_TRUE(waitForMaximised(false));
    EXPECT_EQ(utf8(maximiseButton().accessibleName()), "Maximise");
    EXPECT_EQ(utf8(maximiseButton().toolTip()), "Maximise");
}

TEST_P(WindowButtonTest, minimises) {
    pressButton(minimiseButton());
    EXPECT_TRUE(test::runUntil([this] { return window_.isMinimized(); }));
}

TEST_P(WindowButtonTest, closes) {
    pressButton(closeButton());
    EXPECT_TRUE(test::runUntil([this] { return !window_.isVisible(); }));
}

INSTANTIATE_TEST_SUITE_P(Activations, WindowButtonTest,
                         ::testing::Values(Activation{"mouse", {}},
                                           Activation{"space", Qt::Key_Space},
                                           Activation{"enter", Qt::Key_Return},
                                           Activation{"keypadEnter", Qt::Key_Enter}),
                         [](const auto& row) { return std::string(row.param.name); });

TEST_F(TitleBarTest, restoresAFullScreenWindow) {
    window_.showFullScreen();
    ASSERT_TRUE(test::runUntil([this] { return window_.width() > 1200; }));
    EXPECT_EQ(utf8(maximiseButton().accessibleName()), "Restore");
    click(middleOf(maximiseButton()));
    EXPECT_TRUE(test::runUntil([this] { return window_.width() < 1200; }));
    EXPECT_FALSE(window_.isFullScreen());
}

TEST_F(TitleBarTest, maximisesAndRestoresOnADoubleClickInItsDragArea) {
    doubleClick(dragPoint());
    EXPECT_TRUE(waitForMaximised(true));
    // Over the sidebar as well.
    doubleClick({250, 14});
    EXPECT_TRUE(waitForMaximised(false));
    EXPECT_EQ(window_.moves, 0);
}

TEST_F(TitleBarTest, ignoresADoubleClickOnTheMenuBarOrAButton) {
    int openings = 0;
    QObject::connect(menu_, &QMenu::aboutToShow, [&openings] { ++openings; });
    int requests = 0;
    QObject::connect(&titleBar(), &TitleBar::maximiseRequested, [&requests] { ++requests; });
    doubleClick(middleOf(titleBar().menuBar()));
    EXPECT_EQ(openings, 1);
    menu_->close();
    settle();
    QObject::disconnect(&titleBar(), &TitleBar::minimiseRequested, nullptr, nullptr);
    doubleClick(middleOf(minimiseButton()));
    EXPECT_EQ(requests, 0);
    // A double click with another mouse button is ignored.
    QTest::mouseDClick(&titleBar(), Qt::RightButton, {}, dragPoint());
    EXPECT_EQ(requests, 0);
    // mouseDClick keeps the button pressed, for the tests after this one too.
    release(Qt::RightButton);
}

TEST_F(TitleBarTest, movesTheWindowFromTheDragDistanceOn) {
    const int distance = QApplication::startDragDistance();
    press(Qt::LeftButton);
    moveBy({distance - 1, 0}, Qt::LeftButton);
    EXPECT_EQ(window_.moves, 0);
    moveBy({distance, 0}, Qt::LeftButton);
    EXPECT_EQ(window_.moves, 1);
    // The window system has taken over.
    moveBy({distance + 20, 0}, Qt::LeftButton);
    EXPECT_EQ(window_.moves, 1);
}

TEST_F(TitleBarTest, movesNothingWithoutTheLeftButton) {
    moveBy({50, 0}, Qt::NoButton);
    press(Qt::RightButton);
    moveBy({50, 0}, Qt::RightButton);
    release(Qt::RightButton);
    press(Qt::LeftButton);
    release(Qt::LeftButton);
    moveBy({50, 0}, Qt::NoButton);
    moveBy({50, 0}, Qt::LeftButton);
    EXPECT_EQ(window_.moves, 0);
    // Another button ends the drag.
    press(Qt::LeftButton);
    press(Qt::RightButton);
    moveBy({50, 0}, Qt::LeftButton | Qt::RightButton);
    EXPECT_EQ(window_.moves, 0);
    release(Qt::RightButton);
    release(Qt::LeftButton);
}

TEST_F(TitleBarTest, clearsTheHoverOfAButtonThatMovedFromUnderTheMouse) {
    const QPoint before = QCursor::pos();
    pointAt(maximiseButton());
    EXPECT_TRUE(test::runUntil([this] { return maximiseButton().underMouse(); }));
    maximise();
    EXPECT_FALSE(maximiseButton().rect().contains(maximiseButton().mapFromGlobal(QCursor::pos())));
    EXPECT_FALSE(maximiseButton().underMouse());
    EXPECT_EQ(maximiseButton().grab().toImage().pixelColor(5, 14),
              window_.palette().color(QPalette::Window));
    QCursor::setPos(before);
}

TEST_F(TitleBarTest, keepsTheHoverOfAButtonThatStaysUnderTheMouse) {
    const QPoint before = QCursor::pos();
    pointAt(minimiseButton());
    EXPECT_TRUE(test::runUntil([this] { return minimiseButton().underMouse(); }));
    window_.resize(window_.size() + QSize(0, 40));
    ASSERT_TRUE(test::runUntil([this] { return window_.height() == 680; }));
    settle();
    EXPECT_TRUE(minimiseButton().underMouse());
    QCursor::setPos(before);
}

TEST_F(TitleBarTest, showsTheCloseButtonInRedUnderTheMouse) {
    const auto background = [this] { return closeButton().grab().toImage().pixelColor(7, 14); };
    EXPECT_EQ(background(), window_.palette().color(QPalette::Window));
    closeButton().setAttribute(Qt::WA_UnderMouse);
    EXPECT_EQ(background(), ThemeColor(ThemeColor::Name::redFill).color(window_.palette()));
    EXPECT_GT(closeButton().grab().toImage().pixelColor(18, 14).green(), 230);
}

} // namespace
} // namespace kestrel
