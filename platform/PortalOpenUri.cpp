#include "PortalOpenUri.h"

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusUnixFileDescriptor>
#include <QUuid>

#include <fcntl.h>

#include <utility>

namespace kestrel {

namespace {

using namespace Qt::StringLiterals;

/// Returns a descriptor that grants no access but names the file; invalid if there is none.
QDBusUnixFileDescriptor descriptorOf(const FileURL& url) {
    QDBusUnixFileDescriptor descriptor;
    descriptor.giveFileDescriptor(::open(url.path().c_str(), O_PATH | O_CLOEXEC));
    return descriptor;
}

} // namespace

PortalOpenUri::PortalOpenUri(QDBusConnection bus, std::chrono::milliseconds timeout,
                             std::function<void()> fail, QObject* parent)
    : QObject(parent), bus_(std::move(bus)), timeout_(timeout), fail_(std::move(fail)) {}

void PortalOpenUri::open(Method method, const FileURL& url) {
    const QString service = u"org.freedesktop.portal.Desktop"_s;
    const QString path = u"/org/freedesktop/portal/desktop"_s;
    const QString token = u"kestrel"_s + QUuid::createUuid().toString(QUuid::Id128);
    const QString sender = bus_.baseService().mid(1).replace(u'.', u'_');
    // Subscribed to first: the signal may arrive before the reply.
    bus_.connect(service, path + u"/request/"_s + sender + u'/' + token,
                 u"org.freedesktop.portal.Request"_s, u"Response"_s, this,
                 SLOT(handleResponse(uint, QVariantMap)));
    QDBusMessage message = QDBusMessage::createMethodCall(
        service, path, u"org.freedesktop.portal.OpenURI"_s,
        method == Method::OpenFile ? u"OpenFile"_s : u"OpenDirectory"_s);
    const QString noParentWindow;
    message << noParentWindow << QVariant::fromValue(descriptorOf(url))
            << QVariantMap{{u"handle_token"_s, token}};
    auto* watcher = new QDBusPendingCallWatcher(
        bus_.asyncCall(message, static_cast<int>(timeout_.count())), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this,
            [this](QDBusPendingCallWatcher* finished) {
                finished->deleteLater();
                if (finished->isError()) {
                    finish(false);
                }
            });
}

void PortalOpenUri::handleResponse(uint response, const QVariantMap& /*results*/) {
    constexpr uint otherResponse = 2;
    // Closing the portal's choice of applications is no failure.
    finish(response != otherResponse);
}

void PortalOpenUri::finish(bool isOpened) {
    deleteLater();
    if (const auto fail = std::exchange(fail_, {}); fail && !isOpened) {
        fail();
    }
}

} // namespace kestrel
