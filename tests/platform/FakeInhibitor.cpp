#include "FakeInhibitor.h"

#include <QDBusConnectionInterface>
#include <QDBusError>
#include <QDBusObjectPath>
#include <QDBusUnixFileDescriptor>
#include <QVariantMap>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <utility>

namespace kestrel::test {

namespace {

using namespace Qt::StringLiterals;

QString requestPath() {
    return u"/org/freedesktop/portal/desktop/request/1/1"_s;
}

bool isOpen(const FileDescriptor& lock) {
    pollfd end{.fd = lock.get(), .events = POLLIN, .revents = 0};
    return ::poll(&end, 1, 0) == 0;
}

} // namespace

FakeInhibitor::FakeInhibitor(QDBusConnection bus, QString service)
    : bus_(std::move(bus)), service_(std::move(service)) {
    EXPECT_TRUE(bus_.registerVirtualObject(u"/"_s, this, QDBusConnection::SubPath));
    const auto reply = bus_.interface()->registerService(
        service_, QDBusConnectionInterface::ReplaceExistingService,
        QDBusConnectionInterface::AllowReplacement);
    EXPECT_EQ(reply.value(), QDBusConnectionInterface::ServiceRegistered);
}

FakeInhibitor::~FakeInhibitor() {
    vanish();
    bus_.unregisterObject(u"/"_s, QDBusConnection::UnregisterTree);
}

std::size_t FakeInhibitor::held() const {
    const auto isHeld = [this](const QString& caller) { return isOnBus(caller); };
    return static_cast<std::size_t>(
        std::count_if(agreedCallers_.begin(), agreedCallers_.end(), isHeld) +
        std::count_if(locks_.begin(), locks_.end(), isOpen));
}

std::size_t FakeInhibitor::takeCalls() {
    std::erase_if(agreedCallers_, [this](const QString& caller) { return !isOnBus(caller); });
    return std::exchange(calls_, {}).size();
}

bool FakeInhibitor::isOnBus(const QString& caller) const {
    return bus_.interface()->isServiceRegistered(caller).value();
}

void FakeInhibitor::answerLate() {
    agree(calls_.back());
}

void FakeInhibitor::respond(uint response) {
    QDBusMessage signal = QDBusMessage::createTargetedSignal(
        calls_.back().service(), requestPath(), u"org.freedesktop.portal.Request"_s, u"Response"_s);
    signal << response << QVariantMap();
    EXPECT_TRUE(bus_.send(signal));
}

void FakeInhibitor::vanish() {
    bus_.unregisterService(service_);
}

QString FakeInhibitor::introspect(const QString& /*path*/) const {
    return {};
}

bool FakeInhibitor::handleMessage(const QDBusMessage& message,
                                  const QDBusConnection& /*connection*/) {
    calls_.push_back(message);
    switch (answer) {
    case Answer::agree:
        agree(message);
        break;
    case Answer::agreeTwice:
        agree(message);
        agree(message);
        break;
    case Answer::refuse:
        bus_.send(message.createErrorReply(QDBusError::AccessDenied, u"No"_s));
        break;
    case Answer::nonsense:
        bus_.send(message.createReply(u"nonsense"_s));
        break;
    case Answer::none:
        message.setDelayedReply(true);
        break;
    }
    return true;
}

void FakeInhibitor::agree(const QDBusMessage& call) {
    if (call.interface() == u"org.freedesktop.login1.Manager"_s) {
        std::array<int, 2> ends{};
        EXPECT_EQ(::pipe2(ends.data(), O_CLOEXEC), 0);
        locks_.emplace_back(ends[0]);
        QDBusUnixFileDescriptor given;
        given.giveFileDescriptor(ends[1]);
        bus_.send(call.createReply(QVariant::fromValue(given)));
        return;
    }
    agreedCallers_.push_back(call.service());
    const QVariant request = QVariant::fromValue(QDBusObjectPath(requestPath()));
    const bool isPortal = call.interface() == u"org.freedesktop.portal.Inhibit"_s;
    bus_.send(call.createReply(isPortal ? request : QVariant(uint(7))));
}

} // namespace kestrel::test
