#include "DesktopOpenPanel.h"
#include "FakePortal.h"
#include "PrivateBus.h"
#include "Timeout.h"

#include <QGuiApplication>
#include <QMainWindow>
#include <QTest>

#include <gtest/gtest.h>

#include <optional>

namespace kestrel::test {
namespace {

TEST(PortalParentWindow, isTheActiveWindowOfTheX11Display) {
    ASSERT_EQ(QGuiApplication::platformName(), QStringLiteral("xcb"));
    PrivateBus bus;
    FakePortal portal(bus.connect());
    portal.onOpened = [&](const FakePortal::Request& request) { portal.respond(request, 1); };
    QMainWindow window;
    window.show();
    window.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window, timeout));
    DesktopOpenPanel panel([client = bus.connect()] { return client; });
    EXPECT_EQ(panel.runModal({.title = "Choose"}), std::nullopt);
    ASSERT_EQ(portal.requests().size(), 1U);
    EXPECT_EQ(portal.requests().front().parentWindow,
              QStringLiteral("x11:") + QString::number(window.winId(), 16));
}

} // namespace
} // namespace kestrel::test
