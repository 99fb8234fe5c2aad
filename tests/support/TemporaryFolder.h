#pragma once

#include "FileURL.h"

#include <string>
#include <string_view>

namespace kestrel::test {

/// An empty folder that every user may read and that goes away, with all it holds, with the object.
/// What makes something in it throws where that fails, std::runtime_error or a class below it.
class TemporaryFolder {
  public:
    TemporaryFolder();
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;
    ~TemporaryFolder();

    const FileURL& url() const noexcept { return url_; }

    /// Where a name, or a path, below the folder leads, whether or not anything is there.
    FileURL file(std::string_view name) const { return url_.appendingPathComponent(name); }

    /// Whether something is there, symbolic links followed.
    bool has(std::string_view name) const;

    /// Writes a file below the folder, with its folders, and tells where it is.
    FileURL write(std::string_view name, std::string_view bytes = {}) const;

    /// Makes a folder, and those that are to hold it, and tells where it is.
    FileURL makeFolder(std::string_view name) const;

    /// Makes a symbolic link with this text.
    void makeLink(std::string_view name, const std::string& target) const;

  private:
    FileURL url_;
};

/// The bytes of a file; empty where it cannot be read.
std::string contents(const FileURL& url);

} // namespace kestrel::test
