#pragma once

#include "FileURL.h"
#include "OpenPanel.h"
#include "PortalParentWindow.h"

#include <QDBusConnection>
#include <QDBusObjectPath>
#include <QEventLoop>
#include <QObject>
#include <QString>
#include <QVariantMap>

#include <functional>
#include <optional>
#include <vector>

class QDBusMessage;
class QDBusPendingCallWatcher;

namespace kestrel {

/// One request to the file chooser of the desktop portal. Main thread; not reusable.
class PortalOpenPanel final : public QObject {
    Q_OBJECT

  public:
    struct Answer {
        /// Whether a portal completed the request. If not, the user has chosen nothing yet.
        bool isFromPortal = false;
        /// None when the panel was dismissed.
        std::optional<std::vector<FileURL>> chosen;
    };

    /// `bus` may be disconnected, which means no portal.
    PortalOpenPanel(QDBusConnection bus, OpenPanel::Options options, FileURL startFolder);

    /// Runs a nested event loop, with user input blocked, until the portal has responded or is
    /// known to be missing. Call it once.
    Answer run();

  private:
    using Handler = std::function<void(QDBusPendingCallWatcher&)>;

    Q_SLOT void handleResponse(uint response, const QVariantMap& results);
    Q_SLOT void giveUp();

    void call(const QDBusMessage& message, int timeoutMilliseconds, Handler handler);
    void watchForDisconnect();
    void requestVersion();
    void openFile(const QString& parentWindow);
    void watchFocus();
    void setRequestPath(const QString& path);
    void closeRequest();
    void finish(Answer answer);
    QVariantMap portalOptions(const QString& handleToken) const;

    QDBusConnection bus_;
    OpenPanel::Options options_;
    FileURL startFolder_;
    QEventLoop loop_;
    PortalParentWindow parent_;
    /// The object path of the portal's Request; empty before OpenFile is called.
    QString requestPath_;
    /// Whether a window of the program has had the keyboard focus ever since OpenFile was called.
    bool hasKeptFocus_ = false;
    std::optional<Answer> answer_;
};

} // namespace kestrel
