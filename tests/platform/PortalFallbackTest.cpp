#include "PortalOpenPanelFixture.h"
#include "RunUntil.h"
#include "Timeout.h"

#include <QGuiApplication>
#include <QTest>
#include <QWidget>
#include <QWindow>

#include <gmock/gmock.h>

#include <optional>

namespace kestrel::test {
namespace {

using namespace Qt::StringLiterals;
using testing::ElementsAre;
/// When Qt's dialog is shown instead of the portal's.
using PortalFallbackTest = PortalOpenPanelFixture;

bool showActive(QWidget& window) {
    window.show();
    window.activateWindow();
    return QTest::qWaitForWindowActive(&window, timeout);
}

TEST_F(PortalFallbackTest, returnsNoneWhenAPanelThatTookTheFocusEnds) {
    QWidget window;
    ASSERT_TRUE(showActive(window));
    portal_.onOpened = [&](const FakePortal::Request& request) {
        // For another program's window, which the offscreen platform does not have.
        Q_EMIT qGuiApp->focusWindowChanged(nullptr);
        Q_EMIT qGuiApp->focusWindowChanged(window.windowHandle());
        portal_.respond(request, ended);
    };
    EXPECT_EQ(panel_.runModal(fileOptions()), std::nullopt);
    EXPECT_EQ(qtDialogs_.count(), 0);
}

TEST_F(PortalFallbackTest, returnsNoneWhenTheRequestOfAnInactiveWindowEnds) {
    EXPECT_EQ(runAndRespond(ended), std::nullopt);
    EXPECT_EQ(qtDialogs_.count(), 0);
}

TEST_F(PortalFallbackTest, fallsBackToQtsDialogIfTheRequestEndsAndNoPanelTookTheFocus) {
    QWidget window;
    ASSERT_TRUE(showActive(window));
    EXPECT_EQ(runAndRespond(ended), std::nullopt);
    EXPECT_EQ(portal_.requests().size(), 1U);
    EXPECT_EQ(qtDialogs_.count(), 1);
}

TEST_F(PortalFallbackTest, asksAnOldPortalForFiles) {
    portal_.version = 1;
    EXPECT_EQ(runAndRespond(success, {u"file:///a"_s}), Chosen({FileURL("/a")}));
    EXPECT_EQ(qtDialogs_.count(), 0);
}

TEST_F(PortalFallbackTest, fallsBackToQtForFoldersWithAnOldPortal) {
    portal_.version = 2;
    EXPECT_EQ(panel_.runModal(folderOptions()), std::nullopt);
    EXPECT_EQ(qtDialogs_.count(), 1);
    EXPECT_TRUE(portal_.requests().empty());
    portal_.version = 3;
    portal_.onOpened = [this](const auto& request) { portal_.respond(request, cancelled); };
    EXPECT_EQ(panel_.runModal(folderOptions()), std::nullopt);
    EXPECT_EQ(qtDialogs_.count(), 1);
}

TEST_F(PortalFallbackTest, fallsBackToQtWithoutAFileChooser) {
    portal_.version = std::nullopt;
    EXPECT_EQ(panel_.runModal(fileOptions()), std::nullopt);
    EXPECT_EQ(qtDialogs_.count(), 1);
    EXPECT_TRUE(portal_.requests().empty());
}

TEST_F(PortalFallbackTest, fallsBackToQtOnAnError) {
    portal_.canOpen = false;
    EXPECT_EQ(panel_.runModal(fileOptions()), std::nullopt);
    EXPECT_EQ(portal_.requests().size(), 1U);
    EXPECT_EQ(qtDialogs_.count(), 1);
    // The request is closed in case the portal was only slow.
    EXPECT_TRUE(runUntil([&] { return !portal_.closedPaths().empty(); }));
    EXPECT_THAT(portal_.closedPaths(), ElementsAre(portal_.requests().front().path));
}

TEST_F(PortalFallbackTest, fallsBackToQtWithoutAPortal) {
    portal_.vanish();
    EXPECT_EQ(panel_.runModal(fileOptions()), std::nullopt);
    EXPECT_EQ(qtDialogs_.count(), 1);
}

TEST_F(PortalFallbackTest, fallsBackToQtWithoutABus) {
    DesktopOpenPanel panel(&disconnectedBus);
    EXPECT_EQ(panel.runModal(fileOptions()), std::nullopt);
    EXPECT_EQ(qtDialogs_.count(), 1);
}

TEST_F(PortalFallbackTest, usesTheSessionBusByDefault) {
    // The session bus is unreachable here.
    EXPECT_EQ(makeDesktopOpenPanel()->runModal(fileOptions()), std::nullopt);
    EXPECT_EQ(qtDialogs_.count(), 1);
}

TEST_F(PortalFallbackTest, fallsBackToQtWhenThePortalVanishes) {
    portal_.onOpened = [this](const auto&) { portal_.vanish(); };
    EXPECT_EQ(panel_.runModal(fileOptions()), std::nullopt);
    EXPECT_EQ(portal_.requests().size(), 1U);
    EXPECT_EQ(qtDialogs_.count(), 1);
}

TEST_F(PortalFallbackTest, fallsBackToQtWhenTheBusGoesDown) {
    portal_.onOpened = [this](const auto&) { bus_.stop(); };
    EXPECT_EQ(panel_.runModal(fileOptions()), std::nullopt);
    EXPECT_EQ(qtDialogs_.count(), 1);
}

} // namespace
} // namespace kestrel::test
