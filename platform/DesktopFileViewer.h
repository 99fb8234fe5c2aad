#pragma once

#include "FileURL.h"
#include "FileViewer.h"

#include <QDBusConnection>
#include <QDBusError>
#include <QObject>

#include <chrono>
#include <functional>

namespace kestrel {

/// The file manager on the session bus; where there is none, the desktop portal or the default
/// application for folders, which select nothing and open the folder itself.
class DesktopFileViewer final : public QObject, public FileViewer {
    Q_OBJECT

  public:
    /// `bus` returns the session bus; called by every `reveal`. Whoever does not reply within
    /// `timeout` has failed; the default allows for the start of a file manager.
    explicit DesktopFileViewer(std::function<QDBusConnection()> bus,
                               std::chrono::milliseconds timeout = std::chrono::seconds(10));

    void reveal(const FileURL& folder) override;

  private:
    void askPortal(const QDBusConnection& bus, const FileURL& folder, const QDBusError& error);

    std::function<QDBusConnection()> bus_;
    std::chrono::milliseconds timeout_;
};

} // namespace kestrel
