#pragma once

#include "FileURL.h"

#include <memory>

namespace kestrel {

/// The desktop's file manager.
class FileViewer {
  public:
    FileViewer() = default;
    FileViewer(const FileViewer&) = delete;
    FileViewer& operator=(const FileViewer&) = delete;
    virtual ~FileViewer() = default;

    /// Shows a folder selected in the one that contains it, or opens the folder itself if no file
    /// manager can select it. Asynchronous; errors are ignored. Main thread.
    virtual void reveal(const FileURL& folder) = 0;
};

/// Returns a viewer that calls org.freedesktop.FileManager1, on an error the desktop portal, and
/// then the default application for folders.
std::unique_ptr<FileViewer> makeDesktopFileViewer();

} // namespace kestrel
