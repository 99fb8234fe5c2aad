#pragma once

#include <QString>

struct wl_display;
struct wl_registry;
struct zxdg_imported_v2;
struct zxdg_importer_v2;

namespace kestrel::test {

/// Another client of the compositor, as a portal is, which imports an exported window.
class WaylandImporter {
  public:
    WaylandImporter();
    WaylandImporter(const WaylandImporter&) = delete;
    WaylandImporter& operator=(const WaylandImporter&) = delete;
    ~WaylandImporter();

    /// Imports the window with this handle, instead of the previous one. Blocks.
    void import(const QString& handle);

    /// Returns whether the compositor knows the imported window. Blocks.
    bool isValid();

  private:
    struct Events;

    wl_display* connection_;
    wl_registry* registry_;
    zxdg_importer_v2* importer_ = nullptr;
    zxdg_imported_v2* imported_ = nullptr;
    bool isDestroyed_ = false;
};

} // namespace kestrel::test
