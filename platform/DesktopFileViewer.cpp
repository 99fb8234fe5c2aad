#include "DesktopFileViewer.h"

#include "FileSystem.h"
#include "FileUriConversion.h"
#include "PortalOpenUri.h"

#include <QByteArray>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDesktopServices>
#include <QString>
#include <QStringList>
#include <QUrl>

#include <memory>
#include <string>
#include <utility>

namespace kestrel {

namespace {

using namespace Qt::StringLiterals;

/// The folder, or the one that contained it if it is gone.
FileURL existingFolder(const FileURL& folder) {
    return isFolder(folder) ? folder : folder.deletingLastPathComponent();
}

void openFolder(const FileURL& folder) {
    // Percent-encoded, since a QString loses bytes of a path that is not UTF-8.
    const std::string uri = uriFromFileUrl(existingFolder(folder));
    QDesktopServices::openUrl(QUrl::fromEncoded(QByteArray::fromStdString(uri)));
}

} // namespace

DesktopFileViewer::DesktopFileViewer(std::function<QDBusConnection()> bus,
                                     std::chrono::milliseconds timeout)
    : bus_(std::move(bus)), timeout_(timeout) {}

void DesktopFileViewer::reveal(const FileURL& folder) {
    const QDBusConnection bus = bus_();
    if (!bus.isConnected()) {
        openFolder(folder);
        return;
    }
    const QString name = u"org.freedesktop.FileManager1"_s;
    QDBusMessage message = QDBusMessage::createMethodCall(name, u"/org/freedesktop/FileManager1"_s,
                                                          name, u"ShowItems"_s);
    const QString startupId;
    message << QStringList(QString::fromStdString(uriFromFileUrl(folder))) << startupId;
    auto* watcher = new QDBusPendingCallWatcher(
        bus.asyncCall(message, static_cast<int>(timeout_.count())), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this,
            [this, bus, folder](QDBusPendingCallWatcher* finished) {
                finished->deleteLater();
                if (finished->isError()) {
                    askPortal(bus, folder, finished->error());
                }
            });
}

void DesktopFileViewer::askPortal(const QDBusConnection& bus, const FileURL& folder,
                                  const QDBusError& error) {
    const auto openWithoutPortal = [folder] { openFolder(folder); };
    auto* request = new PortalOpenUri(bus, timeout_, openWithoutPortal, this);
    // The portal too calls the file manager on the bus, and otherwise opens the containing folder
    // with nothing selected: it can do more only where this program may not make the call.
    const bool mayBeAllowed = error.type() == QDBusError::AccessDenied;
    request->open(mayBeAllowed ? PortalOpenUri::Method::OpenDirectory
                               : PortalOpenUri::Method::OpenFile,
                  mayBeAllowed ? folder : existingFolder(folder));
}

std::unique_ptr<FileViewer> makeDesktopFileViewer() {
    return std::make_unique<DesktopFileViewer>(&QDBusConnection::sessionBus);
}

} // namespace kestrel
