#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>

namespace kestrel {

/// An absolute path in the local file system, as raw bytes: no encoding is assumed, nothing is
/// normalised, and the file need not exist. Trailing slashes are dropped. Returned references and
/// views are valid until the object is assigned to, moved from or destroyed.
///
/// Stored as one string: std::filesystem::path also allocates every component on the heap and
/// compares component by component, and queues hold a hundred thousand paths.
class FileURL {
  public:
    /// Requires: an absolute path without NUL bytes; anything else is a fatal error.
    explicit FileURL(std::string path);

    /// Has no trailing slash, except for the root.
    const std::string& path() const noexcept { return path_; }

    /// The last component; "/" for the root.
    std::string_view lastPathComponent() const noexcept;

    /// The part after the last dot of the last component: "opus" for ".opus"; empty without a dot.
    std::string_view pathExtension() const noexcept;

    /// The last component without its extension and the dot before it: empty for ".opus".
    std::string_view baseName() const noexcept;

    /// The parent folder; the root for the root.
    FileURL deletingLastPathComponent() const;

    /// This path with a component or a relative path appended; unchanged for an empty one. A NUL
    /// byte is a fatal error.
    FileURL appendingPathComponent(std::string_view component) const;

    /// This path with a dot and the extension appended. A NUL byte is a fatal error.
    FileURL appendingPathExtension(std::string_view extension) const;

    /// This path with empty, "." and ".." components resolved lexically, so that equivalent
    /// spellings compare equal. Does not follow symbolic links.
    FileURL standardized() const;

    /// Returns true iff `standardized()` is this path.
    bool isStandardized() const noexcept;

    /// Compares bytes.
    friend bool operator==(const FileURL&, const FileURL&) = default;

  private:
    std::string path_;
};

} // namespace kestrel

template <> struct std::hash<kestrel::FileURL> {
    std::size_t operator()(const kestrel::FileURL& url) const noexcept {
        return std::hash<std::string>()(url.path());
    }
};
