#include "PrivateBus.h"

#include <QDBusMessage>
#include <QUuid>

#include <gtest/gtest.h>

#include <csignal>
#include <fstream>
#include <string>

namespace kestrel::test {

PrivateBus::PrivateBus() {
    const std::string configuration = folder_.url().path() + "/bus.conf";
    std::ofstream(configuration) << R"(<!DOCTYPE busconfig PUBLIC
        "-//freedesktop//DTD D-Bus Bus Configuration 1.0//EN"
        "http://www.freedesktop.org/standards/dbus/1.0/busconfig.dtd">
        <busconfig>
          <type>session</type>
          <listen>unix:dir=)" << folder_.url().path()
                                 << R"(</listen>
          <servicedir>)" << folder()
                                 << R"(</servicedir>
          <auth>EXTERNAL</auth>
          <policy context="default">
            <allow send_destination="*" eavesdrop="true"/>
            <allow eavesdrop="true"/>
            <allow own="*"/>
          </policy>
        </busconfig>)";
    daemon_.start(QStringLiteral("dbus-daemon"),
                  {QStringLiteral("--nofork"), QStringLiteral("--print-address"),
                   QStringLiteral("--config-file=") + QString::fromStdString(configuration)});
    while (!daemon_.canReadLine() && daemon_.waitForReadyRead()) {
    }
    address_ = QString::fromUtf8(daemon_.readLine().trimmed());
    EXPECT_FALSE(address_.isEmpty())
        << "dbus-daemon does not start: " << daemon_.readAllStandardError().toStdString();
}

PrivateBus::~PrivateBus() {
    for (const QString& name : connectionNames_) {
        QDBusConnection::disconnectFromBus(name);
    }
    stop();
}

QDBusConnection PrivateBus::connect() {
    const QString name = QUuid::createUuid().toString();
    connectionNames_.append(name);
    QDBusConnection connection = QDBusConnection::connectToBus(address_, name);
    EXPECT_TRUE(connection.isConnected());
    return connection;
}

void PrivateBus::addService(const std::string& name, const std::string& command) {
    std::ofstream(folder() + "/" + name + ".service")
        << "[D-BUS Service]\nName=" << name << "\nExec=" << command << "\n";
    const QDBusMessage reload = QDBusMessage::createMethodCall(
        QStringLiteral("org.freedesktop.DBus"), QStringLiteral("/org/freedesktop/DBus"),
        QStringLiteral("org.freedesktop.DBus"), QStringLiteral("ReloadConfig"));
    EXPECT_EQ(connect().call(reload).type(), QDBusMessage::ReplyMessage);
}

void PrivateBus::stop() {
    daemon_.kill();
    daemon_.waitForFinished();
}

void PrivateBus::pause() {
    EXPECT_EQ(::kill(static_cast<pid_t>(daemon_.processId()), SIGSTOP), 0);
}

void PrivateBus::resume() {
    EXPECT_EQ(::kill(static_cast<pid_t>(daemon_.processId()), SIGCONT), 0);
}

QDBusConnection disconnectedBus() {
    return QDBusConnection(QStringLiteral("no such connection"));
}

} // namespace kestrel::test
