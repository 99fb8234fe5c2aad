#include "FakePortal.h"

#include <QDBusArgument>
#include <QDBusError>
#include <QDBusObjectPath>
#include <QDBusPendingCallWatcher>
#include <QDBusVariant>

#include <gtest/gtest.h>

#include <utility>

namespace kestrel::test {

namespace {

using namespace Qt::StringLiterals;

QString serviceName() {
    return u"org.freedesktop.portal.Desktop"_s;
}

QString objectPath() {
    return u"/org/freedesktop/portal/desktop"_s;
}

} // namespace

FakePortal::FakePortal(QDBusConnection bus) : bus_(std::move(bus)) {
    EXPECT_TRUE(bus_.registerVirtualObject(objectPath(), this, QDBusConnection::SubPath));
    EXPECT_TRUE(bus_.registerService(serviceName()));
}

FakePortal::~FakePortal() {
    vanish();
    bus_.unregisterObject(objectPath(), QDBusConnection::UnregisterTree);
}

void FakePortal::respond(const Request& request, uint response, const QStringList& uris) {
    QDBusMessage message = QDBusMessage::createTargetedSignal(
        request.caller, request.path, u"org.freedesktop.portal.Request"_s, u"Response"_s);
    QVariantMap results;
    if (response == 0) {
        results.insert(u"uris"_s, uris);
    }
    message << response << results;
    EXPECT_TRUE(bus_.send(message));
}

void FakePortal::vanish() {
    bus_.unregisterService(serviceName());
}

QString FakePortal::introspect(const QString& /*path*/) const {
    return {};
}

bool FakePortal::handleMessage(const QDBusMessage& message, const QDBusConnection& /*connection*/) {
    if (message.member() == u"Get"_s) {
        answerVersion(message);
    } else if (message.member() == u"OpenFile"_s) {
        open(message);
    } else if (message.member() == u"Close"_s) {
        closedPaths_.push_back(message.path());
        bus_.send(message.createReply());
    } else {
        return false;
    }
    return true;
}

void FakePortal::answerVersion(const QDBusMessage& message) {
    EXPECT_EQ(message.arguments().value(0).toString(), u"org.freedesktop.portal.FileChooser"_s);
    EXPECT_EQ(message.arguments().value(1).toString(), u"version"_s);
    if (version) {
        bus_.send(message.createReply(QVariant::fromValue(QDBusVariant(*version))));
    } else {
        bus_.send(message.createErrorReply(QDBusError::InvalidArgs, u"No such interface"_s));
    }
}

void FakePortal::open(const QDBusMessage& message) {
    EXPECT_EQ(message.interface(), u"org.freedesktop.portal.FileChooser"_s);
    EXPECT_EQ(message.signature(), u"ssa{sv}"_s);
    Request request;
    request.caller = message.service();
    request.parentWindow = message.arguments().value(0).toString();
    request.title = message.arguments().value(1).toString();
    request.options = qdbus_cast<QVariantMap>(message.arguments().value(2));
    const QString sender = message.service().mid(1).replace(u'.', u'_');
    request.path = otherRequestPath.isEmpty()
                       ? objectPath() + u"/request/"_s + sender + u'/' +
                             request.options.value(u"handle_token"_s).toString()
                       : otherRequestPath;
    requests_.push_back(request);
    if (!canOpen) {
        bus_.send(message.createErrorReply(QDBusError::Failed, u"No backend"_s));
        return;
    }
    if (onOpen) {
        onOpen(request);
    }
    bus_.send(message.createReply(QVariant::fromValue(QDBusObjectPath(request.path))));
    awaitDelivery(request);
}

void FakePortal::awaitDelivery(const Request& request) {
    // D-Bus keeps messages between two connections in order: who replies to the ping has the reply.
    const QDBusMessage ping = QDBusMessage::createMethodCall(
        request.caller, u"/"_s, u"org.freedesktop.DBus.Peer"_s, u"Ping"_s);
    auto* watcher = new QDBusPendingCallWatcher(bus_.asyncCall(ping), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this,
            [this, request](QDBusPendingCallWatcher* finished) {
                finished->deleteLater();
                EXPECT_FALSE(finished->isError());
                if (onOpened) {
                    onOpened(request);
                }
            });
}

} // namespace kestrel::test
