#pragma once

#include "FileURL.h"

#include <string>
#include <string_view>

namespace kestrel::test {

/// A temporary folder that every user may read, removed recursively on destruction. Members that
/// create something throw std::runtime_error or a subclass on failure.
class TemporaryFolder {
  public:
    TemporaryFolder();
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;
    ~TemporaryFolder();

    const FileURL& url() const noexcept { return url_; }

    /// The path of a name, or relative path, below the folder. It need not exist.
    FileURL file(std::string_view name) const { return url_.appendingPathComponent(name); }

    /// Returns whether the path exists. Follows symbolic links.
    bool has(std::string_view name) const;

    /// Writes a file, creating its parent folders, and returns its path.
    FileURL write(std::string_view name, std::string_view bytes = {}) const;

    /// Creates a folder and its parents, and returns its path.
    FileURL makeFolder(std::string_view name) const;

    /// Creates a symbolic link to `target`, verbatim.
    void makeLink(std::string_view name, const std::string& target) const;

  private:
    FileURL url_;
};

/// Returns the bytes of a file; empty if it cannot be read.
std::string contents(const FileURL& url);

} // namespace kestrel::test
