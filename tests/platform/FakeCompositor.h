#pragma once

#include <QSocketNotifier>
#include <QString>

#include <optional>
#include <vector>

struct wl_display;
struct wl_event_queue;
struct wl_resource;
struct wl_surface;

namespace kestrel::test {

/// A Wayland compositor in the test's event loop that exports surfaces (xdg-foreign), and a
/// connection to it of a client that has a surface. The connection's events are read, as Qt does,
/// but those of its default queue are not dispatched.
class FakeCompositor {
  public:
    struct Options {
        bool hasV1 = false;
        bool hasV2 = false;
        bool isAnswering = true;
    };

    explicit FakeCompositor(Options options);
    FakeCompositor(const FakeCompositor&) = delete;
    FakeCompositor& operator=(const FakeCompositor&) = delete;
    ~FakeCompositor();

    wl_display* connection() const { return connection_; }

    wl_surface* surface() const { return surface_; }

    /// The interface of each export so far.
    const std::vector<QString>& exports() const { return exports_; }

    /// The number of exports that have not been destroyed.
    int liveExports() const { return liveExports_; }

    /// Sends the handle of the latest export.
    void answer();

    void disconnectClient();

    static QString handle() { return QStringLiteral("the 'handle'"); }

  private:
    struct Requests;

    void serve();
    void readEvents();
    void createSurface();

    Options options_;
    wl_display* server_;
    wl_display* connection_ = nullptr;
    wl_event_queue* readerQueue_ = nullptr;
    wl_surface* surface_ = nullptr;
    const void* surfaceResource_ = nullptr;
    wl_resource* latestExport_ = nullptr;
    std::vector<QString> exports_;
    int liveExports_ = 0;
    std::optional<QSocketNotifier> serverNotifier_;
    std::optional<QSocketNotifier> connectionNotifier_;
};

} // namespace kestrel::test
