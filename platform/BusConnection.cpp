#include "BusConnection.h"

#include <QPointer>
#include <QSocketNotifier>

#include <poll.h>
#include <systemd/sd-bus.h>

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <limits>
#include <utility>

namespace kestrel {

namespace {

struct MessageReleaser {
    void operator()(sd_bus_message* message) const { sd_bus_message_unref(message); }
};

using OwnedMessage = std::unique_ptr<sd_bus_message, MessageReleaser>;

/// A time in microseconds.
constexpr auto unlimited = std::numeric_limits<std::uint64_t>::max();

} // namespace

/// A handler, owned by the slot that libsystemd keeps for it.
struct BusConnection::Registration {
    Handler handler;
    /// The slot outlives a connection that a handler destroys.
    QPointer<BusConnection> connection;
    bool expectsReply = false;

    static int handleReply(sd_bus_message* message, void* data, sd_bus_error* /*error*/) {
        const bool isError = sd_bus_message_is_method_error(message, nullptr) > 0;
        const Handler handler = std::exchange(static_cast<Registration*>(data)->handler, {});
        handler(isError ? nullptr : message);
        return 0;
    }

    static int handleSignal(sd_bus_message* message, void* data, sd_bus_error* /*error*/) {
        const auto* registration = static_cast<Registration*>(data);
        if (registration->connection != nullptr) {
            registration->handler(message);
        }
        return 0;
    }

    static void destroy(void* data) {
        const std::unique_ptr<Registration> registration(static_cast<Registration*>(data));
        if (registration->expectsReply && registration->handler &&
            registration->connection != nullptr) {
            registration->connection->fail(std::move(registration->handler));
        }
    }

    /// Lets the slot live as long as it is of use, and own `registration`.
    static void release(sd_bus_slot* slot, std::unique_ptr<Registration> registration) {
        sd_bus_slot_set_destroy_callback(slot, &destroy);
        static_cast<void>(registration.release());
        sd_bus_slot_set_floating(slot, 1);
        sd_bus_slot_unref(slot);
    }
};

void BusConnection::Closer::operator()(sd_bus* bus) const {
    // Without flushing, which would wait for the bus.
    sd_bus_close_unref(bus);
}

BusConnection::BusConnection(Bus bus) {
    sd_bus* opened = nullptr;
    const int result =
        bus == Bus::session ? sd_bus_open_user(&opened) : sd_bus_open_system(&opened);
    bus_.reset(result < 0 ? nullptr : opened);
    timer_.setSingleShot(true);
    connect(&timer_, &QTimer::timeout, this, &BusConnection::process);
    watch();
}

BusConnection::~BusConnection() = default;

void BusConnection::call(const Method& method, const Arguments& arguments, Handler handler) {
    auto registration =
        std::make_unique<Registration>(Registration{std::move(handler), this, true});
    sd_bus_message* created = nullptr;
    int result = bus_ == nullptr
                     ? -1
                     : sd_bus_message_new_method_call(bus_.get(), &created, method.service,
                                                      method.path, method.interface, method.name);
    const OwnedMessage message(created);
    sd_bus_slot* slot = nullptr;
    if (result >= 0) {
        sd_bus_message_set_auto_start(message.get(), method.startsService ? 1 : 0);
        result = arguments(message.get());
    }
    if (result >= 0) {
        result = sd_bus_call_async(bus_.get(), &slot, message.get(), &Registration::handleReply,
                                   registration.get(), unlimited);
    }
    if (result < 0) {
        fail(std::move(registration->handler));
        return;
    }
    Registration::release(slot, std::move(registration));
    watch();
}

void BusConnection::subscribe(const char* matchRule, Handler handler) {
    auto registration =
        std::make_unique<Registration>(Registration{std::move(handler), this, false});
    sd_bus_slot* slot = nullptr;
    // Without a handler for the bus's reply, a refusal would close the connection.
    const auto ignoreReply = [](sd_bus_message*, void*, sd_bus_error*) { return 0; };
    if (bus_ != nullptr &&
        sd_bus_add_match_async(bus_.get(), &slot, matchRule, &Registration::handleSignal,
                               ignoreReply, registration.get()) >= 0) {
        Registration::release(slot, std::move(registration));
        watch();
    }
}

bool BusConnection::isReady() const {
    std::uint64_t unsent = 0;
    return bus_ != nullptr && sd_bus_is_ready(bus_.get()) > 0 &&
           sd_bus_get_n_queued_write(bus_.get(), &unsent) >= 0 && unsent == 0;
}

void BusConnection::emitSignal(const char* path, const char* interface, const char* name,
                               const Arguments& arguments) {
    sd_bus_message* created = nullptr;
    if (bus_ == nullptr ||
        sd_bus_message_new_signal(bus_.get(), &created, path, interface, name) < 0) {
        return;
    }
    const OwnedMessage message(created);
    if (arguments(message.get()) >= 0) {
        sd_bus_send(bus_.get(), message.get(), nullptr);
        watch();
    }
}

void BusConnection::fail(Handler handler) {
    QMetaObject::invokeMethod(
        this, [handler = std::move(handler)] { handler(nullptr); }, Qt::QueuedConnection);
}

void BusConnection::process() {
    const QPointer<BusConnection> self = this;
    // Messages that are left over make the timeout 0.
    constexpr int mostMessages = 64;
    int result = 1;
    for (int count = 0; count < mostMessages && result > 0; ++count) {
        result = sd_bus_process(bus_.get(), nullptr);
        if (self == nullptr) {
            return;
        }
    }
    if (result < 0) {
        bus_.reset();
    }
    watch();
}

void BusConnection::watch() {
    const int descriptor = bus_ == nullptr ? -1 : sd_bus_get_fd(bus_.get());
    const int events = descriptor < 0 ? -1 : sd_bus_get_events(bus_.get());
    std::uint64_t deadline = 0;
    if (events < 0 || sd_bus_get_timeout(bus_.get(), &deadline) < 0) {
        stopWatching();
        return;
    }
    watchDescriptor(descriptor);
    // NOLINTNEXTLINE(hicpp-signed-bitwise): as poll() has them.
    readable_->setEnabled((events & POLLIN) != 0);
    writable_->setEnabled((events & POLLOUT) != 0);
    if (deadline == unlimited) {
        timer_.stop();
        return;
    }
    using namespace std::chrono;
    // Of CLOCK_MONOTONIC, as is std::chrono::steady_clock.
    const microseconds now = duration_cast<microseconds>(steady_clock::now().time_since_epoch());
    const microseconds left = microseconds(static_cast<std::int64_t>(deadline)) - now;
    timer_.start(std::max(ceil<milliseconds>(left), milliseconds::zero()));
}

void BusConnection::watchDescriptor(int descriptor) {
    // It changes when the bus has several addresses, and the first refuses.
    if (readable_ != nullptr && readable_->socket() == descriptor) {
        return;
    }
    readable_ = std::make_unique<QSocketNotifier>(descriptor, QSocketNotifier::Read);
    writable_ = std::make_unique<QSocketNotifier>(descriptor, QSocketNotifier::Write);
    connect(readable_.get(), &QSocketNotifier::activated, this, &BusConnection::process);
    connect(writable_.get(), &QSocketNotifier::activated, this, &BusConnection::process);
}

void BusConnection::stopWatching() {
    readable_.reset();
    writable_.reset();
    timer_.stop();
}

} // namespace kestrel
