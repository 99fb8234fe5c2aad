#include "BusConnection.h"

#include "PrivateBus.h"
#include "ProcessCounts.h"
#include "RunUntil.h"
#include "ScopedVariable.h"
#include "SilentBus.h"

#include <gtest/gtest.h>
#include <systemd/sd-bus.h>

#include <memory>
#include <optional>
#include <string>

namespace kestrel::test {
namespace {

/// A call to the bus itself, which every bus answers.
constexpr BusConnection::Method getId = {"org.freedesktop.DBus", "/org/freedesktop/DBus",
                                         "org.freedesktop.DBus", "GetId"};
constexpr BusConnection::Method missing = {"org.kestrel.Missing", "/", "org.kestrel.Missing",
                                           "Call"};

int noArguments(sd_bus_message* /*message*/) {
    return 0;
}

/// The outcome of a call; none before it has ended.
using Outcome = std::optional<bool>;

Outcome outcomeOf(BusConnection& bus, const BusConnection::Method& method) {
    Outcome outcome;
    bus.call(method, noArguments, [&](sd_bus_message* reply) { outcome = reply != nullptr; });
    EXPECT_FALSE(outcome) << "before the event loop";
    EXPECT_TRUE(runUntil([&] { return outcome.has_value(); }));
    return outcome;
}

Outcome outcomeAt(const std::string& address) {
    const ScopedVariable variable("DBUS_SESSION_BUS_ADDRESS", address);
    BusConnection bus(BusConnection::Bus::session);
    return outcomeOf(bus, getId);
}

TEST(BusConnectionTest, callsWithTheReply) {
    const PrivateBus daemon;
    const ScopedVariable variable("DBUS_SESSION_BUS_ADDRESS", daemon.address());
    BusConnection bus(BusConnection::Bus::session);
    std::string id;
    bus.call(getId, noArguments, [&](sd_bus_message* reply) {
        const char* text = nullptr;
        ASSERT_NE(reply, nullptr);
        ASSERT_GE(sd_bus_message_read(reply, "s", &text), 0);
        id = text;
    });
    EXPECT_TRUE(runUntil([&] { return !id.empty(); }));
}

TEST(BusConnectionTest, connectsToTheSystemBus) {
    const PrivateBus daemon;
    const ScopedVariable variable("DBUS_SYSTEM_BUS_ADDRESS", daemon.address());
    BusConnection bus(BusConnection::Bus::system);
    EXPECT_EQ(outcomeOf(bus, getId), Outcome(true));
}

TEST(BusConnectionTest, triesTheNextAddressIfOneIsRefused) {
    const PrivateBus daemon;
    EXPECT_EQ(outcomeAt("unix:path=/no-such-bus;" + daemon.address()), Outcome(true));
}

TEST(BusConnectionTest, failsCallsWhoseReplyIsAnError) {
    const PrivateBus daemon;
    const ScopedVariable variable("DBUS_SESSION_BUS_ADDRESS", daemon.address());
    BusConnection bus(BusConnection::Bus::session);
    EXPECT_EQ(outcomeOf(bus, missing), Outcome(false));
    EXPECT_EQ(outcomeOf(bus, getId), Outcome(true));
}

TEST(BusConnectionTest, failsCallsWithoutABus) {
    EXPECT_EQ(outcomeAt("unix:path=/no-such-bus"), Outcome(false));
    EXPECT_EQ(outcomeAt("no address"), Outcome(false));
    const ScopedVariable folder("XDG_RUNTIME_DIR", "/no-such-folder");
    EXPECT_EQ(outcomeAt(""), Outcome(false));
}

TEST(BusConnectionTest, failsCallsWithArgumentsThatCannotBeSent) {
    const PrivateBus daemon;
    const ScopedVariable variable("DBUS_SESSION_BUS_ADDRESS", daemon.address());
    BusConnection bus(BusConnection::Bus::session);
    Outcome outcome;
    const auto notUtf8 = [](sd_bus_message* message) {
        return sd_bus_message_append(message, "s", "\xE9");
    };
    bus.call(getId, notUtf8, [&](sd_bus_message* reply) { outcome = reply != nullptr; });
    EXPECT_TRUE(runUntil([&] { return outcome.has_value(); }));
    EXPECT_EQ(outcome, Outcome(false));
}

TEST(BusConnectionTest, failsCallsToABusThatIsNone) {
    SilentBus server;
    const ScopedVariable variable("DBUS_SESSION_BUS_ADDRESS", server.address());
    BusConnection bus(BusConnection::Bus::session);
    Outcome outcome;
    bus.call(getId, noArguments, [&](sd_bus_message* reply) { outcome = reply != nullptr; });
    server.send("HTTP/1.1 400 Bad Request\r\nContent-Length: 0\r\nConnection: close\r\n\r\n");
    EXPECT_TRUE(runUntil([&] { return outcome.has_value(); }));
    EXPECT_EQ(outcome, Outcome(false));
    EXPECT_FALSE(bus.isReady());
}

TEST(BusConnectionTest, failsCallsThatWaitWhenTheBusGoes) {
    SilentBus server;
    const ScopedVariable variable("DBUS_SESSION_BUS_ADDRESS", server.address());
    BusConnection bus(BusConnection::Bus::session);
    int failures = 0;
    for (int call = 0; call < 2; ++call) {
        bus.call(getId, noArguments,
                 [&](sd_bus_message* reply) { failures += reply == nullptr ? 1 : 0; });
    }
    server.send("");
    QCoreApplication::processEvents();
    EXPECT_EQ(failures, 0);
    server.hangUp();
    EXPECT_TRUE(runUntil([&] { return failures == 2; }));
}

TEST(BusConnectionTest, isReadyOnceTheBusHasAnswered) {
    const PrivateBus daemon;
    const ScopedVariable variable("DBUS_SESSION_BUS_ADDRESS", daemon.address());
    const BusConnection bus(BusConnection::Bus::session);
    EXPECT_FALSE(bus.isReady());
    EXPECT_TRUE(runUntil([&] { return bus.isReady(); }));
}

TEST(BusConnectionTest, neitherWaitsForASilentBusNorCallsAfterItsEnd) {
    const SilentBus server;
    const ScopedVariable variable("DBUS_SESSION_BUS_ADDRESS", server.address());
    const std::size_t before = ProcessCounts::now().descriptors;
    int calls = 0;
    {
        BusConnection bus(BusConnection::Bus::session);
        bus.call(getId, noArguments, [&](sd_bus_message*) { ++calls; });
        bus.subscribe("type='signal'", [&](sd_bus_message*) { ++calls; });
        bus.emitSignal("/", "org.kestrel.Test", "Signal", noArguments);
        QCoreApplication::processEvents();
        EXPECT_FALSE(bus.isReady());
        EXPECT_GT(ProcessCounts::now().descriptors, before);
    }
    QCoreApplication::processEvents();
    EXPECT_EQ(calls, 0);
    EXPECT_EQ(ProcessCounts::now().descriptors, before);
}

TEST(BusConnectionTest, mayBeDestroyedByAHandler) {
    const PrivateBus daemon;
    const ScopedVariable variable("DBUS_SESSION_BUS_ADDRESS", daemon.address());
    const std::size_t before = ProcessCounts::now().descriptors;
    auto bus = std::make_unique<BusConnection>(BusConnection::Bus::session);
    int calls = 0;
    for (int call = 0; call < 2; ++call) {
        bus->call(getId, noArguments, [&](sd_bus_message*) {
            ++calls;
            bus.reset();
        });
    }
    EXPECT_TRUE(runUntil([&] { return bus == nullptr; }));
    QCoreApplication::processEvents();
    EXPECT_EQ(calls, 1);
    EXPECT_EQ(ProcessCounts::now().descriptors, before);
}

TEST(BusConnectionTest, callsNoHandlerAfterOneHasDestroyedIt) {
    const PrivateBus daemon;
    const ScopedVariable variable("DBUS_SESSION_BUS_ADDRESS", daemon.address());
    auto bus = std::make_unique<BusConnection>(BusConnection::Bus::session);
    int calls = 0;
    for (int subscription = 0; subscription < 2; ++subscription) {
        bus->subscribe("type='signal',interface='org.kestrel.Test'", [&](sd_bus_message*) {
            ++calls;
            bus.reset();
        });
    }
    EXPECT_EQ(outcomeOf(*bus, getId), Outcome(true));
    bus->emitSignal("/", "org.kestrel.Test", "Said", noArguments);
    EXPECT_TRUE(runUntil([&] { return bus == nullptr; }));
    EXPECT_EQ(calls, 1);
}

TEST(BusConnectionTest, takesSignalsThatItSubscribedTo) {
    const PrivateBus daemon;
    const ScopedVariable variable("DBUS_SESSION_BUS_ADDRESS", daemon.address());
    BusConnection receiver(BusConnection::Bus::session);
    BusConnection sender(BusConnection::Bus::session);
    std::string text;
    receiver.subscribe("type='signal',interface='org.kestrel.Test'", [&](sd_bus_message* signal) {
        const char* word = "";
        EXPECT_GE(sd_bus_message_read(signal, "s", &word), 0);
        text += word;
    });
    // The bus keeps the order of what one connection sends.
    EXPECT_EQ(outcomeOf(receiver, getId), Outcome(true));
    const auto send = [&](const char* interface, const char* word) {
        sender.emitSignal("/", interface, "Said", [word](sd_bus_message* message) {
            return sd_bus_message_append(message, "s", word);
        });
    };
    send("org.kestrel.Other", "other");
    send("org.kestrel.Test", "one");
    send("org.kestrel.Test", "two");
    EXPECT_TRUE(runUntil([&] { return text == "onetwo"; })) << text;
}

} // namespace
} // namespace kestrel::test
