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
    /// Moves the mouse over the strip, from the free place, with these buttons down.
    void moveBy(QPoint way, Qt::MouseButtons buttons) {
        const QPointF place = freePlace() + way;
        QMouseEvent event(QEvent::MouseMove, place, strip().mapToGlobal(place), Qt::NoButton,
                          buttons, {});
        QApplication::sendEvent(&strip(), &event);
    }

    /// Moves the pointer. Qt takes no notice where it believes it to be already, which is where the
    /// last event that a test made has put it: in the middle of a button.
    void pointAt(QWidget& button) {
        QCursor::setPos(window_.mapToGlobal(middleOf(button) + QPoint(3, 0)));
    }

    void press(Qt::MouseButton button) { QTest::mousePress(&strip(), button, {}, freePlace()); }

    void release(Qt::MouseButton button) { QTest::mouseRelease(&strip(), button, {}, freePlace()); }
};

TEST_F(TitleBarTest, carriesTheMenuBarAndTheButtonsAtItsEnds) {
    EXPECT_EQ(closeButton().geometry(), QRect(window_.width() - 36, 0, 36, 28));
    EXPECT_EQ(minimiseButton().geometry(), QRect(window_.width() - 108, 0, 36, 28));
    EXPECT_EQ(strip().menuBar().height(), 28);
    EXPECT_LT(strip().menuBar().geometry().right(), 100);
    EXPECT_EQ(utf8(minimiseButton().accessibleName()), "Minimise");
    EXPECT_EQ(utf8(minimiseButton().toolTip()), "Minimise");
    EXPECT_EQ(utf8(closeButton().accessibleName()), "Close");
    EXPECT_EQ(utf8(closeButton().toolTip()), "Close");
}

struct Way {
    const char* name;
    /// None for the mouse.
    std::optional<Qt::Key> key;

    friend std::ostream& operator<<(std::ostream& out, const Way& row) { return out << row.name; }
};

class WindowButtonTest : public TitleBarTest, public ::testing::WithParamInterface<Way> {
  protected:
    /// In the way of this row.
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

INSTANTIATE_TEST_SUITE_P(Ways, WindowButtonTest,
                         ::testing::Values(Way{"mouse", {}}, Way{"space", Qt::Key_Space},
                                           Way{"enter", Qt::Key_Return},
                                           Way{"enterOfTheKeypad", Qt::Key_Enter}),
                         [](const auto& row) { return std::string(row.param.name); });

TEST_F(TitleBarTest, restoresAWindowThatFillsTheScreen) {
    window_.showFullScreen();
    ASSERT_TRUE(test::runUntil([this] { return window_.width() > 1200; }));
    EXPECT_EQ(utf8(maximiseButton().accessibleName()), "Restore");
    click(middleOf(maximiseButton()));
    EXPECT_TRUE(test::runUntil([this] { return window_.width() < 1200; }));
    EXPECT_FALSE(window_.isFullScreen());
}

TEST_F(TitleBarTest, maximisesAndRestoresByADoubleClickOnItsFreeArea) {
    doubleClick(freePlace());
    EXPECT_TRUE(waitForMaximised(true));
    // Over the sidebar as well.
    doubleClick({250, 14});
    EXPECT_TRUE(waitForMaximised(false));
    EXPECT_EQ(window_.moves, 0);
}

TEST_F(TitleBarTest, maximisesNothingByADoubleClickOnTheMenuBarOrAButton) {
    int openings = 0;
    QObject::connect(menu_, &QMenu::aboutToShow, [&openings] { ++openings; });
    int requests = 0;
    QObject::connect(&strip(), &TitleBar::maximiseRequested, [&requests] { ++requests; });
    doubleClick(middleOf(strip().menuBar()));
    EXPECT_EQ(openings, 1);
    menu_->close();
    settle();
    QObject::disconnect(&strip(), &TitleBar::minimiseRequested, nullptr, nullptr);
    doubleClick(middleOf(minimiseButton()));
    EXPECT_EQ(requests, 0);
    // The double click of any other button means nothing.
    QTest::mouseDClick(&strip(), Qt::RightButton, {}, freePlace());
    EXPECT_EQ(requests, 0);
    // Which holds the button down until then, for the tests after this one too.
    release(Qt::RightButton);
}

TEST_F(TitleBarTest, movesTheWindowOnceTheMouseHasGoneTheDragDistance) {
    const int distance = QApplication::startDragDistance();
    press(Qt::LeftButton);
    moveBy({distance - 1, 0}, Qt::LeftButton);
    EXPECT_EQ(window_.moves, 0);
    moveBy({distance, 0}, Qt::LeftButton);
    EXPECT_EQ(window_.moves, 1);
    // The window system has it now.
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
}

TEST_F(TitleBarTest, leavesNoHighlightOnAButtonThatTheWindowTookFromUnderTheMouse) {
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

TEST_F(TitleBarTest, keepsTheHighlightOfAButtonThatStaysUnderTheMouse) {
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
    const auto ground = [this] { return closeButton().grab().toImage().pixelColor(7, 14); };
    EXPECT_EQ(ground(), window_.palette().color(QPalette::Window));
    closeButton().setAttribute(Qt::WA_UnderMouse);
    EXPECT_EQ(ground(), ThemeColor(ThemeColor::Name::red).color(window_.palette()));
    EXPECT_GT(closeButton().grab().toImage().pixelColor(18, 14).green(), 230);
}

} // namespace
} // namespace kestrel
