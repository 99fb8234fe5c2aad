#pragma once

#include "TemporaryFolder.h"

#include <QProcess>

namespace kestrel::test {

/// A headless sway, a Wayland compositor that exports windows (xdg-foreign). While it lives, the
/// environment makes it the only display of this process and of its children.
class Sway {
  public:
    /// Fails the test if sway does not start.
    Sway();
    Sway(const Sway&) = delete;
    Sway& operator=(const Sway&) = delete;
    /// Ends sway, and waits for its exit.
    ~Sway();

  private:
    /// Also holds the socket.
    TemporaryFolder folder_;
    QProcess process_;
};

} // namespace kestrel::test
