#include "FakeUriPortal.h"

#include <QDBusArgument>
#include <QDBusError>
#include <QDBusObjectPath>
#include <QDBusUnixFileDescriptor>
#include <QVariantMap>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <array>
#include <utility>

namespace kestrel::test {

namespace {

using namespace Qt::StringLiterals;

QString uriPortalPath() {
    return u"/org/freedesktop/portal/desktop"_s;
}

std::string pathOf(const QDBusUnixFileDescriptor& descriptor) {
    const int number = descriptor.fileDescriptor();
    // An ordinary descriptor of a folder would need the permission to read it.
    EXPECT_NE(::fcntl(number, F_GETFL) & O_PATH, 0);
    const std::string link = "/proc/self/fd/" + std::to_string(number);
    std::array<char, 4096> buffer{};
    const ssize_t length = ::readlink(link.c_str(), buffer.data(), buffer.size());
    return {buffer.data(), static_cast<std::size_t>(length < 0 ? 0 : length)};
}

} // namespace

FakeUriPortal::FakeUriPortal(QDBusConnection bus) : bus_(std::move(bus)) {
    EXPECT_TRUE(bus_.registerVirtualObject(uriPortalPath(), this));
    EXPECT_TRUE(bus_.registerService(u"org.freedesktop.portal.Desktop"_s));
}

FakeUriPortal::~FakeUriPortal() {
    bus_.unregisterService(u"org.freedesktop.portal.Desktop"_s);
    bus_.unregisterObject(uriPortalPath());
}

QString FakeUriPortal::introspect(const QString& /*path*/) const {
    return {};
}

bool FakeUriPortal::handleMessage(const QDBusMessage& message,
                                  const QDBusConnection& /*connection*/) {
    EXPECT_EQ(message.interface(), u"org.freedesktop.portal.OpenURI"_s);
    EXPECT_EQ(message.signature(), u"sha{sv}"_s);
    requests_.push_back(
        {message.member(), pathOf(message.arguments().value(1).value<QDBusUnixFileDescriptor>())});
    if (answer == Answer::Error) {
        bus_.send(message.createErrorReply(QDBusError::UnknownMethod, u"No such method"_s));
    } else if (answer == Answer::Reply) {
        const auto options = qdbus_cast<QVariantMap>(message.arguments().value(2));
        const QString path = uriPortalPath() + u"/request/"_s +
                             message.service().mid(1).replace(u'.', u'_') + u'/' +
                             options.value(u"handle_token"_s).toString();
        bus_.send(message.createReply(QVariant::fromValue(QDBusObjectPath(path))));
        respond(message, path);
    }
    return true;
}

void FakeUriPortal::respond(const QDBusMessage& message, const QString& path) {
    if (!response) {
        return;
    }
    QDBusMessage signal = QDBusMessage::createTargetedSignal(
        message.service(), path, u"org.freedesktop.portal.Request"_s, u"Response"_s);
    signal << *response << QVariantMap();
    EXPECT_TRUE(bus_.send(signal));
}

} // namespace kestrel::test
