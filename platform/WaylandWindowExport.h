#pragma once

#include <QObject>
#include <QString>
#include <QTimer>

#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>

struct wl_callback;
struct wl_display;
struct wl_event_queue;
struct wl_registry;
struct wl_surface;
struct zxdg_exported_v1;
struct zxdg_exported_v2;
struct zxdg_exporter_v1;
struct zxdg_exporter_v2;

namespace kestrel {

/// Exports a toplevel Wayland surface to other programs (xdg-foreign), which can make it the parent
/// of their own windows. The export ends with the object's life. Has an event queue of its own on
/// the connection and leaves reading from it to its owner. Main thread.
class WaylandWindowExport final : public QObject {
    Q_OBJECT

  public:
    /// Returns the surface, with the role xdg_toplevel, or null if it is gone.
    using Surface = std::function<wl_surface*()>;
    /// Takes the handle that names the surface to other programs; empty if the compositor cannot
    /// export surfaces or has not answered in time. Must not destroy the export.
    using Handler = std::function<void(const QString& handle)>;

    /// Calls `handler` once, from the event loop, after `timeout` at the latest. `display` must
    /// outlive the object.
    WaylandWindowExport(wl_display* display, Surface surface, std::chrono::milliseconds timeout,
                        Handler handler);
    WaylandWindowExport(const WaylandWindowExport&) = delete;
    WaylandWindowExport& operator=(const WaylandWindowExport&) = delete;
    ~WaylandWindowExport() override;

  private:
    struct Events;

    struct Deleter {
        void operator()(wl_callback* callback) const;
        void operator()(wl_display* wrapper) const;
        void operator()(wl_event_queue* queue) const;
        void operator()(wl_registry* registry) const;
        void operator()(zxdg_exported_v1* exported) const;
        void operator()(zxdg_exported_v2* exported) const;
        void operator()(zxdg_exporter_v1* exporter) const;
        void operator()(zxdg_exporter_v2* exporter) const;
    };

    template <typename T> using Owned = std::unique_ptr<T, Deleter>;

    void dispatch();
    void addGlobal(std::uint32_t name, const char* interface);
    void exportSurface();
    void finish(const QString& handle);

    wl_display* display_;
    Surface surface_;
    Handler handler_;
    QTimer timer_;
    // The queue is destroyed after the objects that use it.
    Owned<wl_event_queue> queue_;
    Owned<wl_registry> registry_;
    Owned<wl_callback> globalsListed_;
    Owned<zxdg_exporter_v1> exporterV1_;
    Owned<zxdg_exporter_v2> exporterV2_;
    Owned<zxdg_exported_v1> exportedV1_;
    Owned<zxdg_exported_v2> exportedV2_;
};

} // namespace kestrel
