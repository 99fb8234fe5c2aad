#pragma once

#include "FileURL.h"
#include "FileViewer.h"

#include <QDBusConnection>
#include <QObject>

#include <functional>

namespace kestrel {

/// The file manager on the session bus; without one, whatever opens folders by default.
class DesktopFileViewer final : public QObject, public FileViewer {
    Q_OBJECT

  public:
    /// `bus` gives the session bus, asked at every call.
    explicit DesktopFileViewer(std::function<QDBusConnection()> bus);

    void reveal(const FileURL& url) override;

  private:
    std::function<QDBusConnection()> bus_;
};

} // namespace kestrel
