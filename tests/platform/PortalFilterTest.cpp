#include "PortalFilter.h"

#include "FakePortal.h"
#include "PrivateBus.h"
#include "RunUntil.h"

#include <QDBusArgument>
#include <QDBusMessage>
#include <QVariant>
#include <QVariantMap>

#include <gtest/gtest.h>

namespace kestrel::test {
namespace {

using namespace Qt::StringLiterals;
using Pattern = PortalFilter::Pattern;

/// Two filters with two patterns each, as received over D-Bus.
class PortalFilterTest : public testing::Test {
  protected:
    PortalFilterTest() {
        registerPortalFilter();
        QDBusMessage message = QDBusMessage::createMethodCall(
            u"org.freedesktop.portal.Desktop"_s, u"/org/freedesktop/portal/desktop"_s,
            u"org.freedesktop.portal.FileChooser"_s, u"OpenFile"_s);
        const QList<PortalFilter> filters = {{u"first"_s, {{0, u"*.a"_s}, {1, u"text/b"_s}}},
                                             {u"second"_s, {{2, u"*.c"_s}, {0, u"*.d"_s}}}};
        message << QString() << QString()
                << QVariantMap{{u"handle_token"_s, u"test"_s},
                               {u"filters"_s, QVariant::fromValue(filters)}};
        // The reply is ignored.
        client_.send(message);
        EXPECT_TRUE(runUntil([this] { return !portal_.requests().empty(); }));
        received_ = portal_.requests().at(0).options.value(u"filters"_s);
    }

    PrivateBus bus_;
    FakePortal portal_{bus_.connect()};
    QDBusConnection client_ = bus_.connect();
    QVariant received_;
};

void expectPattern(const Pattern& pattern, unsigned kind, const QString& text) {
    EXPECT_EQ(pattern.kind, kind);
    EXPECT_EQ(pattern.text, text);
}

TEST_F(PortalFilterTest, roundTripsOverDBus) {
    const auto filters = qdbus_cast<QList<PortalFilter>>(received_);
    ASSERT_EQ(filters.size(), 2);
    EXPECT_EQ(filters[0].name, u"first"_s);
    ASSERT_EQ(filters[0].patterns.size(), 2);
    expectPattern(filters[0].patterns[0], 0, u"*.a"_s);
    expectPattern(filters[0].patterns[1], 1, u"text/b"_s);
    EXPECT_EQ(filters[1].name, u"second"_s);
    ASSERT_EQ(filters[1].patterns.size(), 2);
    expectPattern(filters[1].patterns[0], 2, u"*.c"_s);
    expectPattern(filters[1].patterns[1], 0, u"*.d"_s);
}

TEST_F(PortalFilterTest, isReadElementByElement) {
    const auto argument = received_.value<QDBusArgument>();
    PortalFilter first;
    PortalFilter second;
    argument.beginArray();
    argument >> first >> second;
    argument.endArray();
    EXPECT_EQ(first.name, u"first"_s);
    EXPECT_EQ(second.name, u"second"_s);
}

TEST_F(PortalFilterTest, hasPatternsReadElementByElement) {
    const auto argument = received_.value<QDBusArgument>();
    QString name;
    Pattern first;
    Pattern second;
    argument.beginArray();
    argument.beginStructure();
    argument >> name;
    argument.beginArray();
    argument >> first >> second;
    argument.endArray();
    argument.endStructure();
    argument.endArray();
    EXPECT_EQ(name, u"first"_s);
    expectPattern(first, 0, u"*.a"_s);
    expectPattern(second, 1, u"text/b"_s);
}

} // namespace
} // namespace kestrel::test
