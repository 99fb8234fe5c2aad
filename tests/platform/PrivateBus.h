#pragma once

#include "TemporaryFolder.h"

#include <QDBusConnection>
#include <QProcess>
#include <QString>
#include <QStringList>

namespace kestrel::test {

/// A private dbus-daemon without services or service activation. It is stopped, and every
/// connection to it closed, on destruction.
class PrivateBus {
  public:
    PrivateBus();
    PrivateBus(const PrivateBus&) = delete;
    PrivateBus& operator=(const PrivateBus&) = delete;
    ~PrivateBus();

    QDBusConnection connect();

    /// Kills the daemon and waits for its exit.
    void stop();

  private:
    TemporaryFolder folder_;
    QProcess daemon_;
    QString address_;
    QStringList connectionNames_;
};

/// Returns a connection that is not connected.
QDBusConnection disconnectedBus();

} // namespace kestrel::test
