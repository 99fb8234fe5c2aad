#include "FakeCompositor.h"

#include "RunUntil.h"

#include <gtest/gtest.h>
#include <sys/socket.h>
#include <wayland-client.h>
#include <wayland-server-core.h>
#include <xdg-foreign-unstable-v1-client.h>
#include <xdg-foreign-unstable-v2-client.h>

#include <array>
#include <string_view>

namespace kestrel::test {

/// The compositor's request handlers; the user data of a resource is the compositor.
struct FakeCompositor::Requests {
    static FakeCompositor& compositorOf(wl_resource* resource) {
        return *static_cast<FakeCompositor*>(::wl_resource_get_user_data(resource));
    }

    static int handle(const void* /*implementation*/, void* target, std::uint32_t /*opcode*/,
                      const wl_message* message, wl_argument* arguments) {
        auto* resource = static_cast<wl_resource*>(target);
        const std::string_view name = message->name;
        FakeCompositor& compositor = compositorOf(resource);
        if (name == "create_surface") {
            compositor.surfaceResource_ = create(resource, wl_surface_interface, arguments[0].n);
        } else if (name == "export") {
            exportSurface(resource, zxdg_exported_v1_interface, arguments);
        } else if (name == "export_toplevel") {
            exportSurface(resource, zxdg_exported_v2_interface, arguments);
        } else {
            EXPECT_EQ(name, "destroy");
            ::wl_resource_destroy(resource);
        }
        return 0;
    }

    static void exportSurface(wl_resource* exporter, const wl_interface& interface,
                              const wl_argument* arguments) {
        FakeCompositor& compositor = compositorOf(exporter);
        EXPECT_EQ(static_cast<const void*>(arguments[1].o), compositor.surfaceResource_);
        compositor.exports_.push_back(QString::fromLatin1(interface.name));
        ++compositor.liveExports_;
        compositor.latestExport_ =
            create(exporter, interface, arguments[0].n,
                   [](wl_resource* destroyed) { --compositorOf(destroyed).liveExports_; });
        if (compositor.options_.isAnswering) {
            compositor.answer();
        }
    }

    static wl_resource* create(wl_resource* factory, const wl_interface& interface,
                               std::uint32_t id, wl_resource_destroy_func_t destroyed = nullptr) {
        wl_resource* resource =
            ::wl_resource_create(::wl_resource_get_client(factory), &interface, 1, id);
        ::wl_resource_set_dispatcher(resource, handle, nullptr, &compositorOf(factory), destroyed);
        return resource;
    }

    template <const wl_interface& interface>
    static void bind(wl_client* client, void* data, std::uint32_t /*version*/, std::uint32_t id) {
        wl_resource* resource = ::wl_resource_create(client, &interface, 1, id);
        ::wl_resource_set_dispatcher(resource, handle, nullptr, data, nullptr);
    }
};

FakeCompositor::FakeCompositor(Options options)
    : options_(options), server_(::wl_display_create()) {
    ::wl_global_create(server_, &wl_compositor_interface, 1, this,
                       Requests::bind<wl_compositor_interface>);
    if (options_.hasV1) {
        ::wl_global_create(server_, &zxdg_exporter_v1_interface, 1, this,
                           Requests::bind<zxdg_exporter_v1_interface>);
    }
    if (options_.hasV2) {
        ::wl_global_create(server_, &zxdg_exporter_v2_interface, 1, this,
                           Requests::bind<zxdg_exporter_v2_interface>);
    }
    std::array<int, 2> ends{};
    EXPECT_EQ(::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends.data()), 0);
    ::wl_client_create(server_, ends[0]);
    connection_ = ::wl_display_connect_to_fd(ends[1]);
    readerQueue_ = ::wl_display_create_queue(connection_);
    serverNotifier_.emplace(::wl_event_loop_get_fd(::wl_display_get_event_loop(server_)),
                            QSocketNotifier::Read);
    QObject::connect(&*serverNotifier_, &QSocketNotifier::activated, [this] { serve(); });
    connectionNotifier_.emplace(ends[1], QSocketNotifier::Read);
    QObject::connect(&*connectionNotifier_, &QSocketNotifier::activated, [this] { readEvents(); });
    createSurface();
}

FakeCompositor::~FakeCompositor() {
    connectionNotifier_.reset();
    serverNotifier_.reset();
    if (surface_ != nullptr) {
        ::wl_surface_destroy(surface_);
    }
    ::wl_event_queue_destroy(readerQueue_);
    ::wl_display_disconnect(connection_);
    ::wl_display_destroy_clients(server_);
    ::wl_display_destroy(server_);
}

void FakeCompositor::answer() {
    constexpr std::uint32_t handleEvent = 0;
    ::wl_resource_post_event(latestExport_, handleEvent, handle().toUtf8().constData());
    ::wl_display_flush_clients(server_);
}

void FakeCompositor::disconnectClient() {
    ::wl_display_destroy_clients(server_);
}

void FakeCompositor::serve() {
    constexpr int noWaiting = 0;
    ::wl_event_loop_dispatch(::wl_display_get_event_loop(server_), noWaiting);
    ::wl_display_flush_clients(server_);
}

void FakeCompositor::readEvents() {
    // The queue is always empty, so that this cannot fail.
    EXPECT_EQ(::wl_display_prepare_read_queue(connection_, readerQueue_), 0);
    if (::wl_display_read_events(connection_) < 0) {
        connectionNotifier_->setEnabled(false);
    }
}

void FakeCompositor::createSurface() {
    wl_registry* registry = ::wl_display_get_registry(connection_);
    static constexpr wl_registry_listener listener = {
        .global =
            [](void* data, wl_registry* source, std::uint32_t name, const char* interface,
               std::uint32_t /*version*/) {
                if (interface == std::string_view(wl_compositor_interface.name)) {
                    *static_cast<wl_compositor**>(data) = static_cast<wl_compositor*>(
                        ::wl_registry_bind(source, name, &wl_compositor_interface, 1));
                }
            },
        .global_remove = [](void*, wl_registry*, std::uint32_t) {},
    };
    wl_compositor* compositor = nullptr;
    ::wl_registry_add_listener(registry, &listener, &compositor);
    ::wl_display_flush(connection_);
    EXPECT_TRUE(runUntil([&] {
        ::wl_display_dispatch_pending(connection_);
        return compositor != nullptr;
    }));
    surface_ = ::wl_compositor_create_surface(compositor);
    ::wl_compositor_destroy(compositor);
    ::wl_registry_destroy(registry);
    ::wl_display_flush(connection_);
}

} // namespace kestrel::test
