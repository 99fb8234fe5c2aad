#pragma once

#include "FileURL.h"
#include "FileViewer.h"

#include <QDBusConnection>
#include <QObject>

#include <functional>

namespace kestrel {

/// The file manager on the session bus; falls back to the default application for folders.
class DesktopFileViewer final : public QObject, public FileViewer {
    Q_OBJECT

  public:
    /// `bus` returns the session bus; called by every `reveal`.
    explicit DesktopFileViewer(std::function<QDBusConnection()> bus);

    void reveal(const FileURL& url) override;

  private:
    std::function<QDBusConnection()> bus_;
};

} // namespace kestrel
