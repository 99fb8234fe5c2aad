#include "BusName.h"

#include "PrivateBus.h"
#include "RunUntil.h"

#include <QDBusConnectionInterface>
#include <QDBusReply>
#include <QProcess>

#include <gtest/gtest.h>

namespace kestrel::test {
namespace {

using namespace Qt::StringLiterals;

class BusNameTest : public testing::Test {
  protected:
    bool waitForOwner(const QDBusConnection& owner) {
        return runUntil([&] {
            return watcher_.interface()->serviceOwner(name_).value() == owner.baseService();
        });
    }

    const QString name_ = u"org.kestrel.Test"_s;
    PrivateBus bus_;
    QDBusConnection watcher_ = bus_.connect();
};

TEST_F(BusNameTest, isOwnedByTheProgramThatRequestsIt) {
    const QDBusConnection program = bus_.connect();
    requestBusName(program, name_);
    EXPECT_TRUE(waitForOwner(program));
}

TEST_F(BusNameTest, passesToTheQueuedInstanceWhenItsOwnerDisconnects) {
    const QDBusConnection second = bus_.connect();
    {
        const QDBusConnection first = bus_.connect();
        requestBusName(first, name_);
        ASSERT_TRUE(waitForOwner(first));
        requestBusName(second, name_);
        // A round trip: the bus has handled the request, which was sent first.
        ASSERT_TRUE(second.interface()->isServiceRegistered(name_).value());
        EXPECT_TRUE(waitForOwner(first));
        QDBusConnection::disconnectFromBus(first.name());
    }
    EXPECT_TRUE(waitForOwner(second));
}

TEST_F(BusNameTest, isRequestedFromTheObjectOfTheBus) {
    // dbus-daemon answers at every path, other buses only at this one.
    QProcess monitor;
    monitor.start(u"dbus-monitor"_s, {u"--address"_s, QString::fromStdString(bus_.address()),
                                      u"member='RequestName'"_s});
    QString output;
    const auto prints = [&](const QString& text) {
        return runUntil([&] {
            output += QString::fromUtf8(monitor.readAllStandardOutput());
            return output.contains(text);
        });
    };
    // It loses its own name when it begins.
    ASSERT_TRUE(prints(u"NameLost"_s));
    requestBusName(bus_.connect(), name_);
    EXPECT_TRUE(prints(u"path=/org/freedesktop/DBus; interface=org.freedesktop.DBus; "
                       "member=RequestName"_s))
        << output.toStdString();
    monitor.kill();
    EXPECT_TRUE(monitor.waitForFinished());
}

TEST_F(BusNameTest, isNotRequestedWithoutABus) {
    requestBusName(disconnectedBus(), name_);
}

} // namespace
} // namespace kestrel::test
