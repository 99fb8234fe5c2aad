#pragma once

#include "BusConnection.h"

namespace kestrel {

/// The progress on the program's icon in task bars and docks: the LauncherEntry signals that Unity
/// began with, for the desktop file of the program. It is visible from the first `show` until the
/// object is destroyed or the program dies. Main thread; never blocks.
class LauncherProgress final {
  public:
    /// Shows a fraction. Returns false if the bus is not ready for a signal.
    bool show(double fraction);

    LauncherProgress() = default;
    LauncherProgress(const LauncherProgress&) = delete;
    LauncherProgress& operator=(const LauncherProgress&) = delete;
    ~LauncherProgress();

  private:
    void send(double fraction, bool isVisible);

    BusConnection bus_{BusConnection::Bus::session};
    bool isShown_ = false;
};

} // namespace kestrel
