#include "WaylandResources.h"

#include "Timeout.h"

#include <QGuiApplication>
#include <QTest>
#include <QVersionNumber>
#include <QWindow>

#include <gtest/gtest.h>

namespace kestrel::test {
namespace {

TEST(WaylandResources, areNoneOnX11) {
    ASSERT_EQ(QGuiApplication::platformName(), QStringLiteral("xcb"));
    QWindow window;
    window.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&window, timeout));
    EXPECT_EQ(waylandResources(window).display, nullptr);
    EXPECT_EQ(waylandResources(window).surface, nullptr);
}

TEST(WaylandResources, needTheMinorVersionOfQtThatTheProgramIsBuiltWith) {
    constexpr int major = QT_VERSION_MAJOR;
    constexpr int minor = QT_VERSION_MINOR;
    EXPECT_TRUE(hasKnownQtLayout(QVersionNumber(major, minor, QT_VERSION_PATCH)));
    EXPECT_TRUE(hasKnownQtLayout(QVersionNumber(major, minor, QT_VERSION_PATCH + 1)));
    EXPECT_FALSE(hasKnownQtLayout(QVersionNumber(major, minor + 1, 0)));
    EXPECT_FALSE(hasKnownQtLayout(QVersionNumber(major, minor - 1, 0)));
    EXPECT_FALSE(hasKnownQtLayout(QVersionNumber(major + 1, minor, 0)));
}

} // namespace
} // namespace kestrel::test
