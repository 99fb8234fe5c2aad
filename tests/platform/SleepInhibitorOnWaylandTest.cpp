#include "FakeInhibitor.h"
#include "PrivateBus.h"
#include "RunUntil.h"
#include "ScopedVariable.h"
#include "SleepInhibitor.h"

#include <QGuiApplication>

#include <gtest/gtest.h>

namespace kestrel::test {
namespace {

using namespace Qt::StringLiterals;

class SleepInhibitorOnWayland : public testing::Test {
  protected:
    void SetUp() override { ASSERT_EQ(QGuiApplication::platformName(), u"wayland"_s); }

    PrivateBus session_;
    PrivateBus system_;
    ScopedVariable sessionVariable_{"DBUS_SESSION_BUS_ADDRESS", session_.address()};
    ScopedVariable systemVariable_{"DBUS_SYSTEM_BUS_ADDRESS", system_.address()};
    FakeInhibitor portal_{session_.connect(), u"org.freedesktop.portal.Desktop"_s};
    FakeInhibitor logind_{system_.connect(), u"org.freedesktop.login1"_s};
};

TEST_F(SleepInhibitorOnWayland, doesNotAskKdesPortal) {
    const ScopedVariable desktop("XDG_CURRENT_DESKTOP", "KDE");
    const SleepInhibitor inhibitor(u"Converting audio files"_s);
    ASSERT_TRUE(runUntil([this] { return logind_.held() == 1; }));
    EXPECT_TRUE(portal_.calls().empty());
}

TEST_F(SleepInhibitorOnWayland, asksThePortalsOfOtherDesktops) {
    const ScopedVariable desktop("XDG_CURRENT_DESKTOP", "sway:wlroots");
    const SleepInhibitor inhibitor(u"Converting audio files"_s);
    ASSERT_TRUE(runUntil([this] { return portal_.held() == 1; }));
    EXPECT_TRUE(logind_.calls().empty());
}

} // namespace
} // namespace kestrel::test
