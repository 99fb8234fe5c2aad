#include "UserInputFilter.h"
#include "RunUntil.h"
#include "Timeout.h"

#include <QAction>
#include <QApplication>
#include <QDialog>
#include <QDragEnterEvent>
#include <QDragLeaveEvent>
#include <QDropEvent>
#include <QMimeData>
#include <QPointingDevice>
#include <QTest>
#include <QTimer>
#include <QWheelEvent>
#include <QWidget>
#include <QWindow>

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <initializer_list>
#include <memory>
#include <vector>

namespace kestrel::test {
namespace {

/// A window that records the events that reach it.
class RecordingWindow final : public QWidget {
  public:
    RecordingWindow() {
        setAcceptDrops(true);
        setAttribute(Qt::WA_AcceptTouchEvents);
        auto* action = new QAction(this);
        action->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_O));
        connect(action, &QAction::triggered, this, [this] { ++triggered_; });
        addAction(action);
        resize(200, 100);
        show();
        activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(this, timeout));
        types_.clear();
    }

    bool has(QEvent::Type type) const {
        return std::find(types_.begin(), types_.end(), type) != types_.end();
    }

    int triggered() const { return triggered_; }

    bool event(QEvent* event) override {
        types_.push_back(event->type());
        if (event->type() == QEvent::TouchBegin || event->type() == QEvent::DragEnter) {
            event->accept();
            return true;
        }
        return QWidget::event(event);
    }

  private:
    std::vector<QEvent::Type> types_;
    int triggered_ = 0;
};

/// Sends all kinds of user input, through the window system where QTest supports that.
void sendAllInput(RecordingWindow& window) {
    static QPointingDevice* const touchScreen = QTest::createTouchDevice();
    QWindow* const handle = window.windowHandle();
    const QPoint middle(100, 50);
    QTest::keyClick(handle, Qt::Key_A);
    QTest::keyClick(handle, Qt::Key_O, Qt::ControlModifier);
    QTest::mouseMove(handle, middle);
    QTest::mouseClick(handle, Qt::LeftButton, {}, middle);
    QTest::mouseDClick(handle, Qt::LeftButton, {}, middle);
    QTest::touchEvent(handle, touchScreen).press(0, middle, handle);
    QTest::touchEvent(handle, touchScreen).release(0, middle, handle);
    QWheelEvent wheel(middle, window.mapToGlobal(middle), {}, {0, 120}, {}, {}, Qt::NoScrollPhase,
                      false);
    QCoreApplication::sendEvent(&window, &wheel);
    const QMimeData data;
    QDragEnterEvent enter(middle, Qt::CopyAction, &data, Qt::LeftButton, {});
    QCoreApplication::sendEvent(&window, &enter);
    QDropEvent drop(middle, Qt::CopyAction, &data, Qt::LeftButton, {});
    QCoreApplication::sendEvent(&window, &drop);
    QCoreApplication::processEvents();
}

constexpr std::array inputTypes = {
    QEvent::KeyPress,           QEvent::KeyRelease,          QEvent::MouseButtonPress,
    QEvent::MouseButtonRelease, QEvent::MouseButtonDblClick, QEvent::Wheel,
    QEvent::TouchBegin,         QEvent::DragEnter,           QEvent::Drop};

TEST(UserInputFilter, blocksAllInput) {
    RecordingWindow window;
    {
        const UserInputFilter filter;
        sendAllInput(window);
        for (const QEvent::Type type : inputTypes) {
            EXPECT_FALSE(window.has(type)) << type;
        }
        EXPECT_EQ(window.triggered(), 0);
    }
    // Without the filter, the same input reaches the window.
    sendAllInput(window);
    for (const QEvent::Type type : inputTypes) {
        EXPECT_TRUE(window.has(type)) << type;
    }
    EXPECT_EQ(window.triggered(), 1);
}

TEST(UserInputFilter, endsADragThatEnteredBefore) {
    const QMimeData data;
    const QPoint middle(100, 50);
    QDragEnterEvent enter(middle, Qt::CopyAction, &data, Qt::LeftButton, {});
    QDragLeaveEvent leave;
    QDropEvent drop(middle, Qt::CopyAction, &data, Qt::LeftButton, {});
    for (QEvent* end : std::initializer_list<QEvent*>{&leave, &drop}) {
        RecordingWindow window;
        QCoreApplication::sendEvent(window.windowHandle(), &enter);
        ASSERT_TRUE(window.has(QEvent::DragEnter));
        const UserInputFilter filter;
        QCoreApplication::sendEvent(window.windowHandle(), end);
        EXPECT_TRUE(window.has(QEvent::DragLeave)) << end->type();
        EXPECT_FALSE(window.has(QEvent::Drop));
    }
}

TEST(UserInputFilter, blocksClosing) {
    RecordingWindow window;
    auto filter = std::make_unique<UserInputFilter>();
    EXPECT_FALSE(window.windowHandle()->close());
    EXPECT_TRUE(window.isVisible());
    EXPECT_FALSE(window.has(QEvent::Close));
    filter.reset();
    EXPECT_TRUE(window.windowHandle()->close());
    EXPECT_FALSE(window.isVisible());
    EXPECT_TRUE(window.has(QEvent::Close));
}

TEST(UserInputFilter, passesPaintAndTimerEvents) {
    RecordingWindow window;
    const UserInputFilter filter;
    bool hasFired = false;
    QTimer::singleShot(0, &window, [&] { hasFired = true; });
    window.update();
    EXPECT_TRUE(runUntil([&] { return hasFired && window.has(QEvent::Paint); }));
}

TEST(IsUserInputBlocked, isTrueWhileAFilterIsThere) {
    const QWidget window;
    EXPECT_FALSE(isUserInputBlocked(window));
    {
        const UserInputFilter filter;
        EXPECT_TRUE(isUserInputBlocked(window));
    }
    EXPECT_FALSE(isUserInputBlocked(window));
}

TEST(IsUserInputBlocked, isTrueForTheWindowsBehindAModalOne) {
    QWidget behind;
    behind.show();
    QDialog modal(&behind);
    const QWidget part(&modal);
    modal.setModal(true);
    modal.show();
    EXPECT_TRUE(isUserInputBlocked(behind));
    EXPECT_FALSE(isUserInputBlocked(modal));
    EXPECT_FALSE(isUserInputBlocked(part));
    modal.close();
    EXPECT_FALSE(isUserInputBlocked(behind));
}

} // namespace
} // namespace kestrel::test
