#include "FakeFileManager.h"

#include <QDBusError>

#include <gtest/gtest.h>

#include <utility>

namespace kestrel::test {

namespace {

using namespace Qt::StringLiterals;

} // namespace

FakeFileManager::FakeFileManager(QDBusConnection bus) : bus_(std::move(bus)) {
    EXPECT_TRUE(bus_.registerVirtualObject(u"/org/freedesktop/FileManager1"_s, this));
    EXPECT_TRUE(bus_.registerService(u"org.freedesktop.FileManager1"_s));
}

FakeFileManager::~FakeFileManager() {
    bus_.unregisterService(u"org.freedesktop.FileManager1"_s);
    bus_.unregisterObject(u"/org/freedesktop/FileManager1"_s);
}

QString FakeFileManager::introspect(const QString& /*path*/) const {
    return {};
}

bool FakeFileManager::handleMessage(const QDBusMessage& message,
                                    const QDBusConnection& /*connection*/) {
    EXPECT_EQ(message.interface(), u"org.freedesktop.FileManager1"_s);
    EXPECT_EQ(message.member(), u"ShowItems"_s);
    EXPECT_EQ(message.signature(), u"ass"_s);
    shown_.push_back(message.arguments().value(0).toStringList());
    if (answer == Answer::Reply) {
        bus_.send(message.createReply());
    } else if (answer == Answer::Error) {
        bus_.send(message.createErrorReply(QDBusError::Failed, u"Not today"_s));
    } else if (answer == Answer::Refusal) {
        bus_.send(message.createErrorReply(QDBusError::AccessDenied, u"Not you"_s));
    }
    return true;
}

} // namespace kestrel::test
