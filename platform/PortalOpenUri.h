#pragma once

#include "FileURL.h"

#include <QDBusConnection>
#include <QObject>
#include <QVariantMap>

#include <chrono>
#include <functional>

namespace kestrel {

/// One request to the desktop portal to open something in the default application. Destroys itself
/// when the portal has responded. Main thread.
class PortalOpenUri final : public QObject {
    Q_OBJECT

  public:
    enum class Method {
        /// Opens the file or folder itself.
        OpenFile,
        /// Opens the containing folder and, if the portal reaches a file manager by
        /// org.freedesktop.FileManager1, selects the item.
        OpenDirectory,
    };

    /// `fail` is called, at most once and from the event loop, if the portal opens nothing; a
    /// portal that does not reply within `timeout` has failed.
    PortalOpenUri(QDBusConnection bus, std::chrono::milliseconds timeout,
                  std::function<void()> fail, QObject* parent);

    /// Sends the request; the path may have any bytes. Call it once.
    void open(Method method, const FileURL& url);

  private:
    Q_SLOT void handleResponse(uint response, const QVariantMap& results);
    void finish(bool isOpened);

    QDBusConnection bus_;
    std::chrono::milliseconds timeout_;
    std::function<void()> fail_;
};

} // namespace kestrel
