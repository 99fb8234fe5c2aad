#pragma once

#include "FileURL.h"
#include "OpenPanel.h"

#include <QDBusConnection>

#include <functional>
#include <optional>
#include <vector>

namespace kestrel {

/// The panel of the user's desktop through its portal, Qt's dialog where no portal shows
/// one. Starts in the folder that the last choice was made in, at first in the user's music folder.
class DesktopOpenPanel final : public OpenPanel {
  public:
    /// `bus` gives the session bus, asked at every showing.
    explicit DesktopOpenPanel(std::function<QDBusConnection()> bus);

    /// None at once while another call has not returned.
    std::optional<std::vector<FileURL>> runModal(const Options& options) override;

  private:
    std::optional<std::vector<FileURL>> ask(const Options& options) const;
    FileURL startFolder() const;

    std::function<QDBusConnection()> bus_;
    bool isOpen_ = false;
    std::optional<FileURL> lastFolder_;
};

} // namespace kestrel
