#pragma once

#include "FileURL.h"
#include "OpenPanel.h"

#include <QDBusConnection>

#include <functional>
#include <optional>
#include <vector>

namespace kestrel {

/// The file chooser of the desktop portal, or Qt's file dialog if no portal shows one. Starts in
/// the folder of the last choice, at first in the user's music folder.
class DesktopOpenPanel final : public OpenPanel {
  public:
    /// `bus` returns the session bus; called by every `runModal`.
    explicit DesktopOpenPanel(std::function<QDBusConnection()> bus);

    /// Not reentrant: a nested call returns none at once.
    std::optional<std::vector<FileURL>> runModal(const Options& options) override;

  private:
    std::optional<std::vector<FileURL>> ask(const Options& options) const;
    FileURL startFolder() const;

    std::function<QDBusConnection()> bus_;
    bool isOpen_ = false;
    std::optional<FileURL> lastFolder_;
};

} // namespace kestrel
