#pragma once

#include "FileURL.h"
#include "OpenPanel.h"

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

/// One showing of the file chooser of the desktop portal; make another object for the next one.
/// Main thread.
class PortalOpenPanel final : public QObject {
    Q_OBJECT

  public:
    struct Answer {
        /// Whether a portal showed the panel to its end. Where not, the user has not been asked.
        bool isFromPortal = false;
        /// None when the panel was dismissed.
        std::optional<std::vector<FileURL>> chosen;
    };

    /// `bus` may be disconnected: there is no portal then.
    PortalOpenPanel(QDBusConnection bus, OpenPanel::Options options, FileURL startFolder);

    /// Runs the event loop until the portal has answered or is known to be missing, with the
    /// program's windows deaf to the user. To be called once.
    Answer run();

  private:
    using Handler = std::function<void(QDBusPendingCallWatcher&)>;

    Q_SLOT void takeResponse(uint response, const QVariantMap& results);
    Q_SLOT void giveUp();

    void call(const QDBusMessage& message, int timeoutMilliseconds, Handler handler);
    void watchForLoss();
    void askVersion();
    void openFile();
    void setRequestPath(const QString& path);
    void closeRequest();
    void finish(Answer answer);
    QVariantMap portalOptions(const QString& handleToken) const;

    QDBusConnection bus_;
    OpenPanel::Options options_;
    FileURL startFolder_;
    QEventLoop loop_;
    /// Where the portal sends its response; empty before the panel was asked for.
    QString requestPath_;
    std::optional<Answer> answer_;
};

} // namespace kestrel
