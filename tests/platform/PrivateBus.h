#pragma once

#include "TemporaryFolder.h"

#include <QDBusConnection>
#include <QProcess>
#include <QString>
#include <QStringList>

#include <string>

namespace kestrel::test {

/// A private dbus-daemon, without services until a test adds some. It is stopped, and every
/// connection to it closed, on destruction.
class PrivateBus {
  public:
    PrivateBus();
    PrivateBus(const PrivateBus&) = delete;
    PrivateBus& operator=(const PrivateBus&) = delete;
    ~PrivateBus();

    QDBusConnection connect();

    /// Lets the bus start a service by this command.
    void addService(const std::string& name, const std::string& command);

    std::string folder() const { return folder_.url().path(); }

    std::string address() const { return address_.toStdString(); }

    /// Kills the daemon and waits for its exit.
    void stop();

    /// Stops it from answering until `resume`.
    void pause();
    void resume();

  private:
    TemporaryFolder folder_;
    QProcess daemon_;
    QString address_;
    QStringList connectionNames_;
};

/// Returns a connection that is not connected.
QDBusConnection disconnectedBus();

} // namespace kestrel::test
