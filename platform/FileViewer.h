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

    /// Opens the containing folder, with the item selected if the file manager supports that.
    /// Asynchronous; errors are ignored. Main thread.
    virtual void reveal(const FileURL& url) = 0;
};

/// Returns a viewer that calls org.freedesktop.FileManager1, or on an error opens the containing
/// folder in the default application.
std::unique_ptr<FileViewer> makeDesktopFileViewer();

} // namespace kestrel
