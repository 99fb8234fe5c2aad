#pragma once

#include "BusConnection.h"
#include "FileDescriptor.h"

#include <QByteArray>
#include <QObject>
#include <QString>
#include <QTimer>

#include <memory>
#include <queue>

namespace kestrel {

/// Asks the desktop not to suspend the machine for as long as the object lives; the screen may dim
/// and lock. Asks one service after the other until one agrees: the desktop portal, the session's
/// power manager, logind, GNOME's session manager, KDE's power management. If none does, nothing
/// happens. What was given is given back with the connection or the descriptor, also when the
/// program dies. Main thread; never blocks.
class SleepInhibitor final : public QObject {
    Q_OBJECT

  public:
    /// `reason` is shown by desktops that list who keeps the machine awake.
    explicit SleepInhibitor(const QString& reason);
    SleepInhibitor(const SleepInhibitor&) = delete;
    SleepInhibitor& operator=(const SleepInhibitor&) = delete;
    ~SleepInhibitor() override;

  private:
    using Request = void (SleepInhibitor::*)();

    void askNext();
    void askPortal();
    void askPowerManager();
    void askLogind();
    void askGnome();
    void askKde();
    /// Calls a method, and asks the next service if it fails or if this one ends.
    void ask(const BusConnection::Method& method, const BusConnection::Arguments& arguments);

    QByteArray reason_;
    std::queue<Request> requests_;
    /// To the service that was asked last. A new one for each: the old one's late agreement ends
    /// with its connection.
    std::unique_ptr<BusConnection> bus_;
    /// Runs until the service has answered.
    QTimer patience_{this};
    /// logind's; closing it gives the inhibitor back.
    FileDescriptor lock_;
};

} // namespace kestrel
