#pragma once

#include <QString>

#include <chrono>
#include <functional>
#include <memory>

namespace kestrel {

class WaylandWindowExport;

/// The active window as the portal's parent window: "x11:" and its ID, or "wayland:" and a handle,
/// which is valid as long as the object lives. Main thread.
class PortalParentWindow final {
  public:
    /// Takes the identifier; empty if no window is active or the compositor gives no handle. Must
    /// not destroy the object.
    using Handler = std::function<void(const QString& identifier)>;

    PortalParentWindow();
    PortalParentWindow(const PortalParentWindow&) = delete;
    PortalParentWindow& operator=(const PortalParentWindow&) = delete;
    ~PortalParentWindow();

    /// Calls `handler` once: on Wayland from the event loop, within a second, elsewhere before it
    /// returns. Call it once.
    void identify(Handler handler);

  private:
    std::unique_ptr<WaylandWindowExport> export_;
};

} // namespace kestrel
