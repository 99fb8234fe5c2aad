#pragma once

#include <QObject>
#include <QTimer>

#include <functional>
#include <memory>

class QSocketNotifier;

struct sd_bus;
struct sd_bus_message;

namespace kestrel {

/// A D-Bus connection that does not block its thread while the bus hangs: opening, sending and
/// closing take no round trip. QDBusConnection blocks while it connects, and has one thread for all
/// buses. Closing it ends what services hold for this connection. Needs the event loop of its
/// thread.
class BusConnection final : public QObject {
    Q_OBJECT

  public:
    enum class Bus { session, system };

    struct Method {
        const char* service = nullptr;
        const char* path = nullptr;
        const char* interface = nullptr;
        const char* name = nullptr;
        /// Whether the bus may start the service.
        bool startsService = true;
    };

    /// Appends the arguments; negative on an error.
    using Arguments = std::function<int(sd_bus_message*)>;
    /// Takes a message that it does not own. May destroy the connection.
    using Handler = std::function<void(sd_bus_message*)>;

    explicit BusConnection(Bus bus);
    BusConnection(const BusConnection&) = delete;
    BusConnection& operator=(const BusConnection&) = delete;
    ~BusConnection() override;

    /// Calls `handler` once, from the event loop, with the reply, or with null if the call fails;
    /// never after the connection is destroyed. Waits for the reply without a limit.
    void call(const Method& method, const Arguments& arguments, Handler handler);

    /// Calls `handler` for each signal that matches the D-Bus match rule.
    void subscribe(const char* matchRule, Handler handler);

    /// Whether a signal could be sent now, rather than queued for a bus that is not ready for it.
    bool isReady() const;

    /// Sends a signal, or queues it. Failures are ignored.
    void emitSignal(const char* path, const char* interface, const char* name,
                    const Arguments& arguments);

  private:
    struct Closer {
        void operator()(sd_bus* bus) const;
    };

    struct Registration;

    void fail(Handler handler);
    void process();
    void watch();
    void watchDescriptor(int descriptor);
    void stopWatching();

    std::unique_ptr<sd_bus, Closer> bus_;
    std::unique_ptr<QSocketNotifier> readable_;
    std::unique_ptr<QSocketNotifier> writable_;
    /// For the time limits of libsystemd, such as that for authentication.
    QTimer timer_;
};

} // namespace kestrel
