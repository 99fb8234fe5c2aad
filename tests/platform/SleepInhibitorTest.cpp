#include "SleepInhibitor.h"

#include "FakeInhibitor.h"
#include "PrivateBus.h"
#include "ProcessCounts.h"
#include "RunUntil.h"
#include "ScopedVariable.h"
#include "SilentBus.h"

#include <QCoreApplication>
#include <QGuiApplication>
#include <QTimer>

#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <optional>
#include <string>
#include <utility>

namespace kestrel::test {
namespace {

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using Answer = FakeInhibitor::Answer;

constexpr auto noAddress = "unix:path=/no-such-bus";

/// With all services; logind has a bus of its own.
class SleepInhibitorTest : public testing::Test {
  public:
    SleepInhibitorTest(const SleepInhibitorTest&) = delete;
    SleepInhibitorTest& operator=(const SleepInhibitorTest&) = delete;

  protected:
    SleepInhibitorTest() {
        QCoreApplication::setApplicationName(u"Kestrel"_s);
        QGuiApplication::setDesktopFileName(u"org.kestrel.Converter"_s);
    }

    ~SleepInhibitorTest() override {
        inhibitor_.reset();
        QCoreApplication::setApplicationName(name_);
        QGuiApplication::setDesktopFileName(id_);
    }

    void inhibit() { inhibitor_.emplace(u"Converting audio files"_s); }

    /// Of the time for an answer.
    QTimer& timer() { return *inhibitor_->findChild<QTimer*>(); }

    /// Lets the time for an answer be over.
    void runOutOfTime() {
        EXPECT_TRUE(timer().isActive());
        QMetaObject::invokeMethod(&timer(), "timeout");
    }

    /// Waits until the services hold this many in all.
    bool waitUntilHeld(std::size_t count) {
        return runUntil([this, count] { return held() == count; });
    }

    std::size_t held() const {
        return portal_.held() + logind_.held() + gnome_.held() + kde_.held();
    }

    /// Lets all that is on its way arrive: a call to each bus comes after it.
    void settle() {
        for (int round = 0; round < 3; ++round) {
            static_cast<void>(held());
            QCoreApplication::processEvents();
        }
    }

    PrivateBus session_;
    PrivateBus system_;
    ScopedVariable sessionVariable_{"DBUS_SESSION_BUS_ADDRESS", session_.address()};
    ScopedVariable systemVariable_{"DBUS_SYSTEM_BUS_ADDRESS", system_.address()};
    FakeInhibitor portal_{session_.connect(), u"org.freedesktop.portal.Desktop"_s};
    FakeInhibitor logind_{system_.connect(), u"org.freedesktop.login1"_s};
    FakeInhibitor gnome_{session_.connect(), u"org.gnome.SessionManager"_s};
    FakeInhibitor kde_{session_.connect(), u"org.kde.Solid.PowerManagement.PolicyAgent"_s};
    std::optional<SleepInhibitor> inhibitor_;

  private:
    const QString name_ = QCoreApplication::applicationName();
    const QString id_ = QGuiApplication::desktopFileName();
};

TEST_F(SleepInhibitorTest, asksThePortalNotToSuspendAndNobodyElse) {
    inhibit();
    ASSERT_TRUE(waitUntilHeld(1));
    portal_.respond(0);
    settle();
    ASSERT_EQ(portal_.calls().size(), 1U);
    const QDBusMessage& call = portal_.calls().front();
    EXPECT_EQ(call.path(), u"/org/freedesktop/portal/desktop"_s);
    EXPECT_EQ(call.interface(), u"org.freedesktop.portal.Inhibit"_s);
    EXPECT_EQ(call.member(), u"Inhibit"_s);
    EXPECT_EQ(call.signature(), u"sua{sv}"_s);
    EXPECT_EQ(call.arguments().value(0), QVariant(QString()));
    EXPECT_EQ(call.arguments().value(1), QVariant(4U)) << "suspend alone: the screen may lock";
    const auto options = qdbus_cast<QVariantMap>(call.arguments().value(2));
    EXPECT_EQ(options, QVariantMap({{u"reason"_s, u"Converting audio files"_s}}));
    EXPECT_TRUE(logind_.calls().empty());
    EXPECT_TRUE(gnome_.calls().empty());
    EXPECT_TRUE(kde_.calls().empty());
    inhibitor_.reset();
    EXPECT_TRUE(waitUntilHeld(0));
}

TEST_F(SleepInhibitorTest, asksLogindIfThePortalRefuses) {
    portal_.answer = Answer::refuse;
    inhibit();
    ASSERT_TRUE(waitUntilHeld(1));
    ASSERT_EQ(logind_.calls().size(), 1U);
    const QDBusMessage& call = logind_.calls().front();
    EXPECT_EQ(call.path(), u"/org/freedesktop/login1"_s);
    EXPECT_EQ(call.interface(), u"org.freedesktop.login1.Manager"_s);
    EXPECT_EQ(call.member(), u"Inhibit"_s);
    EXPECT_EQ(call.arguments(), QVariantList({u"sleep:idle"_s, u"Kestrel"_s,
                                              u"Converting audio files"_s, u"block"_s}));
    EXPECT_EQ(portal_.held(), 0U);
    EXPECT_TRUE(gnome_.calls().empty());
    inhibitor_.reset();
    EXPECT_TRUE(waitUntilHeld(0));
}

TEST_F(SleepInhibitorTest, asksLogindIfThePortalHasNoBackendForIt) {
    inhibit();
    ASSERT_TRUE(runUntil([this] { return portal_.held() == 1; }));
    portal_.respond(2);
    EXPECT_TRUE(runUntil([this] { return logind_.held() == 1 && portal_.held() == 0; }));
}

TEST_F(SleepInhibitorTest, asksLogindIfThereIsNoPortal) {
    portal_.vanish();
    inhibit();
    EXPECT_TRUE(runUntil([this] { return logind_.held() == 1; }));
}

TEST_F(SleepInhibitorTest, asksThePowerManagerOfTheSessionBeforeLogind) {
    FakeInhibitor manager(session_.connect(), u"org.freedesktop.PowerManagement"_s);
    portal_.answer = Answer::refuse;
    inhibit();
    ASSERT_TRUE(runUntil([&] { return manager.held() == 1; }));
    ASSERT_EQ(manager.calls().size(), 1U);
    const QDBusMessage& call = manager.calls().front();
    EXPECT_EQ(call.path(), u"/org/freedesktop/PowerManagement/Inhibit"_s);
    EXPECT_EQ(call.interface(), u"org.freedesktop.PowerManagement.Inhibit"_s);
    EXPECT_EQ(call.member(), u"Inhibit"_s);
    EXPECT_EQ(call.arguments(), QVariantList({u"Kestrel"_s, u"Converting audio files"_s}));
    EXPECT_TRUE(logind_.calls().empty());
    inhibitor_.reset();
    EXPECT_TRUE(runUntil([&] { return manager.held() == 0; }));
}

TEST_F(SleepInhibitorTest, asksTheNextIfTheServiceThatAgreedIsReplaced) {
    inhibit();
    ASSERT_TRUE(runUntil([this] { return portal_.held() == 1; }));
    const FakeInhibitor successor(session_.connect(), u"org.freedesktop.portal.Desktop"_s);
    EXPECT_TRUE(runUntil([this] { return logind_.held() == 1; }));
    EXPECT_TRUE(successor.calls().empty());
}

TEST_F(SleepInhibitorTest, asksGnomeWithoutLogind) {
    portal_.vanish();
    logind_.answer = Answer::refuse;
    inhibit();
    ASSERT_TRUE(waitUntilHeld(1));
    ASSERT_EQ(gnome_.calls().size(), 1U);
    const QDBusMessage& call = gnome_.calls().front();
    EXPECT_EQ(call.path(), u"/org/gnome/SessionManager"_s);
    EXPECT_EQ(call.interface(), u"org.gnome.SessionManager"_s);
    EXPECT_EQ(call.member(), u"Inhibit"_s);
    EXPECT_EQ(call.arguments(),
              QVariantList({u"org.kestrel.Converter"_s, 0U, u"Converting audio files"_s, 4U}));
    EXPECT_TRUE(kde_.calls().empty());
    inhibitor_.reset();
    EXPECT_TRUE(waitUntilHeld(0));
}

TEST_F(SleepInhibitorTest, asksKdeWithoutGnome) {
    const ScopedVariable system("DBUS_SYSTEM_BUS_ADDRESS", noAddress);
    portal_.vanish();
    gnome_.vanish();
    inhibit();
    ASSERT_TRUE(waitUntilHeld(1));
    ASSERT_EQ(kde_.calls().size(), 1U);
    const QDBusMessage& call = kde_.calls().front();
    EXPECT_EQ(call.path(), u"/org/kde/Solid/PowerManagement/PolicyAgent"_s);
    EXPECT_EQ(call.interface(), u"org.kde.Solid.PowerManagement.PolicyAgent"_s);
    EXPECT_EQ(call.member(), u"AddInhibition"_s);
    EXPECT_EQ(call.arguments(), QVariantList({1U, u"Kestrel"_s, u"Converting audio files"_s}));
    inhibitor_.reset();
    EXPECT_TRUE(waitUntilHeld(0));
}

TEST_F(SleepInhibitorTest, startsNoPowerManager) {
    for (FakeInhibitor* service : {&portal_, &logind_, &gnome_, &kde_}) {
        service->vanish();
    }
    const std::string started = session_.folder() + "/started";
    for (const char* service : {"org.freedesktop.PowerManagement", "org.gnome.SessionManager",
                                "org.kde.Solid.PowerManagement.PolicyAgent"}) {
        session_.addService(service, "/usr/bin/touch " + started);
    }
    const std::size_t before = ProcessCounts::now().descriptors;
    inhibit();
    EXPECT_GT(ProcessCounts::now().descriptors, before);
    ASSERT_TRUE(runUntil([&] { return ProcessCounts::now().descriptors == before; }));
    EXPECT_FALSE(std::filesystem::exists(started));
}

TEST_F(SleepInhibitorTest, holdsNothingIfAllRefuse) {
    for (FakeInhibitor* service : {&portal_, &logind_, &gnome_, &kde_}) {
        service->answer = Answer::refuse;
    }
    const std::size_t before = ProcessCounts::now().descriptors;
    inhibit();
    ASSERT_TRUE(runUntil([this] { return kde_.calls().size() == 1; }));
    EXPECT_TRUE(runUntil([&] { return ProcessCounts::now().descriptors == before; }));
    for (const FakeInhibitor* service : {&portal_, &logind_, &gnome_}) {
        EXPECT_EQ(service->calls().size(), 1U);
    }
}

TEST_F(SleepInhibitorTest, waitsFiveSecondsForAnAnswer) {
    inhibit();
    EXPECT_TRUE(timer().isActive());
    EXPECT_EQ(timer().intervalAsDuration(), 5s);
    ASSERT_TRUE(runUntil([this] { return portal_.held() == 1; }));
    EXPECT_TRUE(runUntil([this] { return !timer().isActive(); }));
    EXPECT_TRUE(logind_.calls().empty()) << "stopped by the answer, not by its end";
    portal_.vanish();
    ASSERT_TRUE(runUntil([this] { return logind_.held() == 1; }));
    EXPECT_TRUE(runUntil([this] { return !timer().isActive(); }));
    EXPECT_TRUE(gnome_.calls().empty());
}

TEST_F(SleepInhibitorTest, asksTheNextIfOneDoesNotAnswerInTime) {
    portal_.answer = Answer::none;
    inhibit();
    ASSERT_TRUE(runUntil([this] { return portal_.calls().size() == 1; }));
    runOutOfTime();
    ASSERT_TRUE(runUntil([this] { return logind_.held() == 1; }));
    // Its caller has gone.
    portal_.answerLate();
    settle();
    EXPECT_EQ(held(), 1U);
    EXPECT_EQ(logind_.calls().size(), 1U);
}

TEST_F(SleepInhibitorTest, givesBackALateDescriptor) {
    portal_.vanish();
    logind_.answer = Answer::none;
    inhibit();
    ASSERT_TRUE(runUntil([this] { return logind_.calls().size() == 1; }));
    runOutOfTime();
    ASSERT_TRUE(runUntil([this] { return gnome_.held() == 1; }));
    logind_.answerLate();
    EXPECT_TRUE(waitUntilHeld(1));
    EXPECT_EQ(logind_.held(), 0U);
}

TEST_F(SleepInhibitorTest, keepsOneDescriptorOfTwoAnswers) {
    portal_.vanish();
    logind_.answer = Answer::agreeTwice;
    inhibit();
    ASSERT_TRUE(runUntil([this] { return logind_.held() > 0; }));
    EXPECT_TRUE(waitUntilHeld(1));
    inhibitor_.reset();
    EXPECT_TRUE(waitUntilHeld(0));
}

TEST_F(SleepInhibitorTest, asksTheNextIfLogindGivesNoDescriptor) {
    portal_.vanish();
    logind_.answer = Answer::nonsense;
    inhibit();
    EXPECT_TRUE(runUntil([this] { return gnome_.held() == 1; }));
}

TEST_F(SleepInhibitorTest, asksTheNextIfTheServiceThatAgreedEnds) {
    inhibit();
    ASSERT_TRUE(runUntil([this] { return portal_.held() == 1; }));
    portal_.vanish();
    ASSERT_TRUE(runUntil([this] { return logind_.held() == 1; }));
    EXPECT_TRUE(gnome_.calls().empty());
}

TEST_F(SleepInhibitorTest, endsWhileTheServiceHasNotAnswered) {
    portal_.answer = Answer::none;
    const std::size_t before = ProcessCounts::now().descriptors;
    inhibit();
    ASSERT_TRUE(runUntil([this] { return portal_.calls().size() == 1; }));
    inhibitor_.reset();
    EXPECT_EQ(ProcessCounts::now().descriptors, before);
    portal_.answerLate();
    EXPECT_TRUE(waitUntilHeld(0));
}

TEST_F(SleepInhibitorTest, doesNotWaitForASilentBus) {
    const SilentBus silent;
    const ScopedVariable session("DBUS_SESSION_BUS_ADDRESS", silent.address());
    inhibit();
    QCoreApplication::processEvents();
    // The portal, and the power manager.
    runOutOfTime();
    runOutOfTime();
    EXPECT_TRUE(runUntil([this] { return logind_.held() == 1; }));
}

TEST(SleepInhibitorWithoutBusTest, holdsNothingAndReportsNothing) {
    const ScopedVariable session("DBUS_SESSION_BUS_ADDRESS", noAddress);
    const ScopedVariable system("DBUS_SYSTEM_BUS_ADDRESS", noAddress);
    const std::size_t before = ProcessCounts::now().descriptors;
    testing::internal::CaptureStderr();
    {
        const SleepInhibitor inhibitor(u"Converting audio files"_s);
        for (int services = 0; services < 6; ++services) {
            QCoreApplication::processEvents();
        }
    }
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
    EXPECT_EQ(ProcessCounts::now().descriptors, before);
}

} // namespace
} // namespace kestrel::test
