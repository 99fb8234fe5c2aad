#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>

namespace kestrel {

/// An absolute location in the local file system, kept as the bytes that the kernel uses: no
/// encoding is assumed, nothing is normalised, and the file need not exist. A trailing slash is not
/// part of a location and is dropped.
///
/// The bytes are one string rather than a std::filesystem::path, which stores every component once
/// more on the heap and compares component by component; queues hold a hundred thousand of these.
class FileURL {
  public:
    /// The path must be absolute and free of NUL bytes; anything else is a fatal error.
    explicit FileURL(std::string path);

    /// Without a slash at its end, but for the root. Valid as long as this object, and not assigned
    /// to.
    const std::string& path() const noexcept { return path_; }

    /// The last component; "/" for the root. Valid as long as this object.
    std::string_view lastPathComponent() const noexcept;

    /// What follows the last dot of the last component, so "opus" for ".opus"; empty without a dot.
    /// Valid as long as this object.
    std::string_view pathExtension() const noexcept;

    /// The last component without its extension and the dot before it, so empty for ".opus". Valid
    /// as long as this object.
    std::string_view baseName() const noexcept;

    /// The containing folder; the root for the root.
    FileURL deletingLastPathComponent() const;

    /// What the component, or the relative path, names in this folder; this location for an empty
    /// one. A NUL byte is a fatal error, in an extension too.
    FileURL appendingPathComponent(std::string_view component) const;

    /// This location with a dot and the extension behind its name.
    FileURL appendingPathExtension(std::string_view extension) const;

    /// The same location with empty, "." and ".." components resolved, by name alone: symbolic
    /// links are not looked at. Two differently written paths of one file have equal standardized
    /// forms.
    FileURL standardized() const;

    /// Byte by byte.
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
