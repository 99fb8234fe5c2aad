#include "DesktopFileViewer.h"

#include "FileUriConversion.h"

#include <QByteArray>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
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

void openFolderOf(const FileURL& url) {
    // Percent-encoded, since a QString loses bytes of a path that is not UTF-8.
    const std::string uri = uriFromFileUrl(url.deletingLastPathComponent());
    QDesktopServices::openUrl(QUrl::fromEncoded(QByteArray::fromStdString(uri)));
}

} // namespace

DesktopFileViewer::DesktopFileViewer(std::function<QDBusConnection()> bus) : bus_(std::move(bus)) {}

void DesktopFileViewer::reveal(const FileURL& url) {
    const QDBusConnection bus = bus_();
    if (!bus.isConnected()) {
        openFolderOf(url);
        return;
    }
    const QString name = u"org.freedesktop.FileManager1"_s;
    QDBusMessage message = QDBusMessage::createMethodCall(name, u"/org/freedesktop/FileManager1"_s,
                                                          name, u"ShowItems"_s);
    const QString startupId;
    message << QStringList(QString::fromStdString(uriFromFileUrl(url))) << startupId;
    auto* watcher = new QDBusPendingCallWatcher(bus.asyncCall(message), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this,
            [url](QDBusPendingCallWatcher* finished) {
                finished->deleteLater();
                if (QDBusPendingReply<>(*finished).isError()) {
                    openFolderOf(url);
                }
            });
}

std::unique_ptr<FileViewer> makeDesktopFileViewer() {
    return std::make_unique<DesktopFileViewer>(&QDBusConnection::sessionBus);
}

} // namespace kestrel
