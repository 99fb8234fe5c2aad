#pragma once

#include "FileURL.h"

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace kestrel {

/// A modal panel in which the user picks existing files or folders.
class OpenPanel {
  public:
    struct Options {
        /// UTF-8.
        std::string title{};
        /// The text of the confirm button, UTF-8.
        std::string prompt{};
        bool canChooseFiles = true;
        bool canChooseDirectories = false;
        bool canCreateDirectories = false;
        bool allowsMultipleSelection = false;
        /// Extensions in lower case, without dots, of the files that can be chosen, in upper or
        /// lower case; empty for any.
        std::vector<std::string> allowedExtensions{};
    };

    OpenPanel() = default;
    OpenPanel(const OpenPanel&) = delete;
    OpenPanel& operator=(const OpenPanel&) = delete;
    virtual ~OpenPanel() = default;

    /// Shows the panel and returns when the user is done: what was chosen, in the panel's order, or
    /// none when the panel was dismissed. Main thread; runs the event loop meanwhile, with the
    /// program's own windows deaf to the user.
    virtual std::optional<std::vector<FileURL>> runModal(const Options& options) = 0;
};

/// The panel of the user's desktop, through its portal, or Qt's own where there is no
/// portal.
std::unique_ptr<OpenPanel> makeDesktopOpenPanel();

} // namespace kestrel
