#pragma once

#include "FileURL.h"

#include <string>
#include <string_view>

namespace kestrel::test {

/// An empty folder that goes away, with all it holds, with the object.
class TemporaryFolder {
  public:
    TemporaryFolder();
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;
    ~TemporaryFolder();

    const FileURL& url() const noexcept { return url_; }

    FileURL file(std::string_view name) const { return url_.appendingPathComponent(name); }

    /// Writes a file below the folder, with its folders, and tells where it is.
    FileURL write(std::string_view name, std::string_view bytes = {}) const;

    FileURL makeFolder(std::string_view name) const;

  private:
    FileURL url_;
};

/// The bytes of a file; empty where it cannot be read.
std::string contents(const FileURL& url);

} // namespace kestrel::test
