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

    /// Opens the folder that holds the location, with the location selected where the file manager
    /// can do that. Returns at once; failures are silent. Main thread.
    virtual void reveal(const FileURL& url) = 0;
};

/// The file manager that answers as org.freedesktop.FileManager1, or the one that opens folders by
/// default where none answers.
std::unique_ptr<FileViewer> makeDesktopFileViewer();

} // namespace kestrel
