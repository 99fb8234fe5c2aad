#include "WaylandWindowExport.h"

#include <QAbstractEventDispatcher>

#include <wayland-client.h>
#include <xdg-foreign-unstable-v1-client.h>
#include <xdg-foreign-unstable-v2-client.h>

#include <string_view>
#include <utility>

namespace kestrel {

/// The event listeners; `data` is the export.
struct WaylandWindowExport::Events {
    static void global(void* data, wl_registry* /*registry*/, std::uint32_t name,
                       const char* interface, std::uint32_t /*version*/) {
        static_cast<WaylandWindowExport*>(data)->addGlobal(name, interface);
    }

    static void globalRemoved(void* /*data*/, wl_registry* /*registry*/, std::uint32_t /*name*/) {}

    static void globalsListed(void* data, wl_callback* /*callback*/, std::uint32_t /*serial*/) {
        static_cast<WaylandWindowExport*>(data)->exportSurface();
    }

    template <typename Exported>
    static void handle(void* data, Exported* /*exported*/, const char* handle) {
        static_cast<WaylandWindowExport*>(data)->finish(QString::fromUtf8(handle));
    }

    static constexpr wl_registry_listener registryListener{.global = global,
                                                           .global_remove = globalRemoved};
    static constexpr wl_callback_listener callbackListener{.done = globalsListed};
    static constexpr zxdg_exported_v1_listener exportedV1Listener{.handle = handle};
    static constexpr zxdg_exported_v2_listener exportedV2Listener{.handle = handle};
};

WaylandWindowExport::WaylandWindowExport(wl_display* display, Surface surface,
                                         std::chrono::milliseconds timeout, Handler handler)
    : display_(display),
      surface_(std::move(surface)),
      handler_(std::move(handler)),
      queue_(::wl_display_create_queue(display)) {
    // Objects inherit the queue of the object that creates them: here the wrapper, not Qt's
    // display.
    const Owned<wl_display> wrapper(static_cast<wl_display*>(::wl_proxy_create_wrapper(display_)));
    ::wl_proxy_set_queue(reinterpret_cast<wl_proxy*>(wrapper.get()), queue_.get());
    registry_.reset(::wl_display_get_registry(wrapper.get()));
    ::wl_registry_add_listener(registry_.get(), &Events::registryListener, this);
    globalsListed_.reset(::wl_display_sync(wrapper.get()));
    ::wl_callback_add_listener(globalsListed_.get(), &Events::callbackListener, this);
    ::wl_display_flush(display_);
    // Whoever reads the connection, a thread of Qt's, wakes up the event loop afterwards.
    connect(QAbstractEventDispatcher::instance(), &QAbstractEventDispatcher::awake, this,
            &WaylandWindowExport::dispatch);
    timer_.setSingleShot(true);
    timer_.callOnTimeout(this, [this] { finish({}); });
    timer_.start(timeout);
}

WaylandWindowExport::~WaylandWindowExport() {
    exportedV1_.reset();
    exportedV2_.reset();
    ::wl_display_flush(display_);
}

void WaylandWindowExport::dispatch() {
    if (::wl_display_dispatch_queue_pending(display_, queue_.get()) < 0) {
        finish({});
    }
}

void WaylandWindowExport::addGlobal(std::uint32_t name, const char* interface) {
    constexpr std::uint32_t version = 1;
    if (interface == std::string_view(zxdg_exporter_v1_interface.name)) {
        exporterV1_.reset(static_cast<zxdg_exporter_v1*>(
            ::wl_registry_bind(registry_.get(), name, &zxdg_exporter_v1_interface, version)));
    } else if (interface == std::string_view(zxdg_exporter_v2_interface.name)) {
        exporterV2_.reset(static_cast<zxdg_exporter_v2*>(
            ::wl_registry_bind(registry_.get(), name, &zxdg_exporter_v2_interface, version)));
    }
}

void WaylandWindowExport::exportSurface() {
    wl_surface* surface = surface_();
    if (surface != nullptr && exporterV2_) {
        exportedV2_.reset(::zxdg_exporter_v2_export_toplevel(exporterV2_.get(), surface));
        ::zxdg_exported_v2_add_listener(exportedV2_.get(), &Events::exportedV2Listener, this);
    } else if (surface != nullptr && exporterV1_) {
        exportedV1_.reset(::zxdg_exporter_v1_export(exporterV1_.get(), surface));
        ::zxdg_exported_v1_add_listener(exportedV1_.get(), &Events::exportedV1Listener, this);
    } else {
        finish({});
        return;
    }
    ::wl_display_flush(display_);
}

void WaylandWindowExport::finish(const QString& handle) {
    timer_.stop();
    disconnect(QAbstractEventDispatcher::instance(), nullptr, this, nullptr);
    if (const Handler handler = std::exchange(handler_, {})) {
        handler(handle);
    }
}

void WaylandWindowExport::Deleter::operator()(wl_callback* callback) const {
    ::wl_callback_destroy(callback);
}

void WaylandWindowExport::Deleter::operator()(wl_display* wrapper) const {
    ::wl_proxy_wrapper_destroy(wrapper);
}

void WaylandWindowExport::Deleter::operator()(wl_event_queue* queue) const {
    ::wl_event_queue_destroy(queue);
}

void WaylandWindowExport::Deleter::operator()(wl_registry* registry) const {
    ::wl_registry_destroy(registry);
}

void WaylandWindowExport::Deleter::operator()(zxdg_exported_v1* exported) const {
    ::zxdg_exported_v1_destroy(exported);
}

void WaylandWindowExport::Deleter::operator()(zxdg_exported_v2* exported) const {
    ::zxdg_exported_v2_destroy(exported);
}

void WaylandWindowExport::Deleter::operator()(zxdg_exporter_v1* exporter) const {
    ::zxdg_exporter_v1_destroy(exporter);
}

void WaylandWindowExport::Deleter::operator()(zxdg_exporter_v2* exporter) const {
    ::zxdg_exporter_v2_destroy(exporter);
}

} // namespace kestrel
