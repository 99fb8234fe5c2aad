#pragma once

#include "FileURL.h"

#include <string>
#include <string_view>

namespace kestrel {

/// A new folder that every user may read, removed with all it holds when this object goes.
class TempFolder {
  public:
    TempFolder();
    TempFolder(const TempFolder&) = delete;
    TempFolder& operator=(const TempFolder&) = delete;
    ~TempFolder();

    const std::string& path() const { return path_; }

    FileURL url() const { return FileURL(path_); }

    /// The location of a path relative to this folder, whether or not anything is there.
    FileURL url(std::string_view relative) const;

    /// Makes an empty file, and the folders on the way to it.
    FileURL addFile(std::string_view relative) const;

    /// Makes a folder, and the folders on the way to it.
    FileURL addFolder(std::string_view relative) const;

    void addLink(std::string_view relative, const std::string& target) const;

  private:
    std::string path_;
};

} // namespace kestrel
