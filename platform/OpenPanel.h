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
        /// Lower-case extensions without dots, matched case-insensitively; empty for any file.
        std::vector<std::string> allowedExtensions{};
    };

    OpenPanel() = default;
    OpenPanel(const OpenPanel&) = delete;
    OpenPanel& operator=(const OpenPanel&) = delete;
    virtual ~OpenPanel() = default;

    /// Shows the panel in a nested event loop, with user input to the program's other windows
    /// blocked (modal). Returns what was chosen, in the panel's order, or none if it was dismissed.
    /// Main thread.
    virtual std::optional<std::vector<FileURL>> runModal(const Options& options) = 0;
};

/// Returns the file chooser of the desktop portal, with Qt's file dialog as a fallback.
std::unique_ptr<OpenPanel> makeDesktopOpenPanel();

} // namespace kestrel
