#pragma once

class QVersionNumber;
class QWindow;
struct wl_display;
struct wl_surface;

namespace kestrel {

/// Qt's connection to the compositor and the surface of one of its windows, both owned by Qt.
struct WaylandResources {
    wl_display* display = nullptr;
    wl_surface* surface = nullptr;
};

/// Returns both, or null pointers if the window is not shown as an xdg_toplevel: on another
/// platform, while it is hidden, or if `hasKnownQtLayout` does not hold. Main thread.
WaylandResources waylandResources(QWindow& window);

/// Returns true iff Qt's private classes have the layout they had at build time: the running Qt has
/// the same major and minor version. Thread-safe.
bool hasKnownQtLayout(const QVersionNumber& runningQt);

} // namespace kestrel
