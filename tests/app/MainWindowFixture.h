#pragma once

#include "CaptionButton.h"
#include "MenuBar.h"
#include "RecordingWindow.h"
#include "RunUntil.h"
#include "Scenario.h"
#include "TitleBar.h"

#include <QApplication>
#include <QMenu>

#include <gtest/gtest.h>

namespace kestrel {

/// The window on the display, active, with one menu and an empty queue.
class MainWindowFixture : public ::testing::Test {
  public:
    MainWindowFixture(const MainWindowFixture&) = delete;
    MainWindowFixture& operator=(const MainWindowFixture&) = delete;

  protected:
    MainWindowFixture() : menu_(window_.menuBar().addMenu(QStringLiteral("&File"))) {
        menu_->addAction(QStringLiteral("Entry"));
        EXPECT_TRUE(showActive(window_));
    }

    ~MainWindowFixture() override { QApplication::setLayoutDirection(Qt::LeftToRight); }

    TitleBar& titleBar() { return *window_.findChild<TitleBar*>(); }

    CaptionButton& minimiseButton() { return *titleBar().buttons()[0]; }

    CaptionButton& maximiseButton() { return *titleBar().buttons()[1]; }

    CaptionButton& closeButton() { return *titleBar().buttons()[2]; }

    /// A point in the title bar's drag area.
    QPoint dragPoint() { return {window_.width() / 2, 14}; }

    QPoint middleOf(QWidget& widget) { return widget.mapTo(&window_, widget.rect().center()); }

    /// Clicks through the QWindow, as the window system does.
    void click(QPoint place) {
        QTest::mouseClick(window_.windowHandle(), Qt::LeftButton, {}, place);
        settle();
    }

    void doubleClick(QPoint place) {
        QTest::mouseDClick(window_.windowHandle(), Qt::LeftButton, {}, place);
        settle();
    }

    /// Waits until the window system has applied the state.
    bool waitForMaximised(bool isMaximised) {
        const bool isReached = test::runUntil([this, isMaximised] {
            return window_.isMaximized() == isMaximised && (window_.width() > 1200) == isMaximised;
        });
        settle();
        return isReached;
    }

    void maximise() {
        window_.showMaximized();
        ASSERT_TRUE(waitForMaximised(true));
    }

    Scenario scenario_;
    RecordingWindow window_{scenario_.model};
    QMenu* menu_;
};

} // namespace kestrel
