#pragma once

#include "TemporaryFolder.h"

#include <QDBusConnection>
#include <QProcess>
#include <QString>
#include <QStringList>

namespace kestrel::test {

/// A message bus of its own, on which nothing is and nothing can be activated. Ends, with every
/// connection to it, when this object goes.
class PrivateBus {
  public:
    PrivateBus();
    PrivateBus(const PrivateBus&) = delete;
    PrivateBus& operator=(const PrivateBus&) = delete;
    ~PrivateBus();

    /// A new connection.
    QDBusConnection connect();

    /// Kills the bus and waits for its end.
    void stop();

  private:
    TemporaryFolder folder_;
    QProcess daemon_;
    QString address_;
    QStringList connectionNames_;
};

/// A connection to nothing.
QDBusConnection disconnectedBus();

} // namespace kestrel::test
