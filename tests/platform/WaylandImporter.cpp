#include "WaylandImporter.h"

#include <gtest/gtest.h>
#include <wayland-client.h>
#include <xdg-foreign-unstable-v2-client.h>

#include <string_view>

namespace kestrel::test {

/// The event listeners; `data` is the importer.
struct WaylandImporter::Events {
    static void global(void* data, wl_registry* registry, std::uint32_t name, const char* interface,
                       std::uint32_t /*version*/) {
        if (interface == std::string_view(zxdg_importer_v2_interface.name)) {
            static_cast<WaylandImporter*>(data)->importer_ = static_cast<zxdg_importer_v2*>(
                ::wl_registry_bind(registry, name, &zxdg_importer_v2_interface, 1));
        }
    }

    static void globalRemoved(void* /*data*/, wl_registry* /*registry*/, std::uint32_t /*name*/) {}

    static void destroyed(void* data, zxdg_imported_v2* /*imported*/) {
        static_cast<WaylandImporter*>(data)->isDestroyed_ = true;
    }

    static constexpr wl_registry_listener registryListener{.global = global,
                                                           .global_remove = globalRemoved};
    static constexpr zxdg_imported_v2_listener importedListener{.destroyed = destroyed};
};

WaylandImporter::WaylandImporter()
    : connection_(::wl_display_connect(nullptr)),
      registry_(::wl_display_get_registry(connection_)) {
    ::wl_registry_add_listener(registry_, &Events::registryListener, this);
    ::wl_display_roundtrip(connection_);
    EXPECT_NE(importer_, nullptr);
}

WaylandImporter::~WaylandImporter() {
    if (imported_ != nullptr) {
        ::zxdg_imported_v2_destroy(imported_);
    }
    ::zxdg_importer_v2_destroy(importer_);
    ::wl_registry_destroy(registry_);
    ::wl_display_disconnect(connection_);
}

void WaylandImporter::import(const QString& handle) {
    if (imported_ != nullptr) {
        ::zxdg_imported_v2_destroy(imported_);
    }
    isDestroyed_ = false;
    imported_ = ::zxdg_importer_v2_import_toplevel(importer_, handle.toUtf8().constData());
    ::zxdg_imported_v2_add_listener(imported_, &Events::importedListener, this);
}

bool WaylandImporter::isValid() {
    return ::wl_display_roundtrip(connection_) >= 0 && !isDestroyed_;
}

} // namespace kestrel::test
