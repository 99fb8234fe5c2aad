#include "FolderListing.h"

#include "AsciiCase.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <memory>
#include <string>

namespace kestrel {

namespace {

/// Without extensions that are everyday words as well ("pages", "numbers", "key", "action"): a
/// music folder may be named so, and its tracks would be skipped silently.
constexpr std::array<std::string_view, 37> packageExtensions = {
    // Applications and plug-ins.
    "app",
    "appex",
    "bundle",
    "component",
    "framework",
    "kext",
    "mdimporter",
    "plugin",
    "prefpane",
    "qlgenerator",
    "saver",
    "systemextension",
    "vst",
    "vst3",
    "wdgt",
    "xpc",
    // Documents and libraries.
    "aplibrary",
    "band",
    "fcpbundle",
    "garageband",
    "imovielibrary",
    "logicx",
    "musiclibrary",
    "photolibrary",
    "photoslibrary",
    "rtfd",
    "scptd",
    "tvlibrary",
    // Installers, disk images and developer files.
    "docset",
    "dsym",
    "mpkg",
    "pkg",
    "playground",
    "sparsebundle",
    "xcarchive",
    "xcodeproj",
    "xcworkspace",
};

struct DirectoryCloser {
    void operator()(DIR* directory) const noexcept { ::closedir(directory); }
};

using Directory = std::unique_ptr<DIR, DirectoryCloser>;

/// Returns null if the folder cannot be opened.
Directory openFolder(const std::string& path, int extraFlags) {
    const int descriptor =
        ::open(path.c_str(), O_RDONLY | O_DIRECTORY | O_NONBLOCK | O_CLOEXEC | extraFlags);
    if (descriptor < 0) {
        return nullptr;
    }
    Directory directory(::fdopendir(descriptor));
    if (!directory) {
        ::close(descriptor);
    }
    return directory;
}

/// Does not follow symbolic links.
bool isFolderEntry(const Directory& directory, const dirent& entry) {
    if (entry.d_type != DT_UNKNOWN) {
        return entry.d_type == DT_DIR;
    }

    struct stat status = {};

    return ::fstatat(::dirfd(directory.get()), entry.d_name, &status, AT_SYMLINK_NOFOLLOW) == 0 &&
           S_ISDIR(status.st_mode);
}

/// The sorted entries of one folder, without hidden ones, and a position among them.
class FolderCursor {
  public:
    struct Entry {
        std::string_view name;
        bool isFolder = false;
    };

    /// Reads the whole folder and closes it, so that open descriptors do not grow with the depth.
    FolderCursor(const std::string& path, int extraFlags)
        : pathLength_(path == "/" ? 0 : path.size()) {
        if (const Directory directory = openFolder(path, extraFlags)) {
            // NOLINTNEXTLINE(concurrency-mt-unsafe): no other thread uses the stream.
            while (const dirent* entry = ::readdir(directory.get())) {
                if (entry->d_name[0] != '.') {
                    append(static_cast<const char*>(entry->d_name),
                           isFolderEntry(directory, *entry));
                }
            }
        }
        std::sort(spans_.begin(), spans_.end(),
                  [this](const Span& a, const Span& b) { return name(a) < name(b); });
    }

    /// The length of the folder's path, without a trailing slash.
    std::size_t pathLength() const { return pathLength_; }

    bool isAtEnd() const { return next_ == spans_.size(); }

    /// The name is valid until this object is moved or destroyed.
    Entry next() {
        const Span& span = spans_[next_++];
        return {name(span), span.isFolder};
    }

  private:
    /// A range of `names_`, by offset: appending reallocates it.
    struct Span {
        std::size_t offset = 0;
        std::size_t length = 0;
        bool isFolder = false;
    };

    void append(std::string_view name, bool isFolder) {
        spans_.push_back({names_.size(), name.size(), isFolder});
        names_ += name;
    }

    std::string_view name(const Span& span) const {
        return std::string_view(names_).substr(span.offset, span.length);
    }

    std::string names_;
    std::vector<Span> spans_;
    std::size_t next_ = 0;
    std::size_t pathLength_;
};

} // namespace

std::vector<FileURL> listFolder(const FileURL& folder) {
    std::vector<FileURL> result;
    std::string path = folder.path();
    std::vector<FolderCursor> cursors;
    cursors.emplace_back(path, 0);
    while (!cursors.empty()) {
        FolderCursor& cursor = cursors.back();
        if (cursor.isAtEnd()) {
            cursors.pop_back();
            continue;
        }
        const FolderCursor::Entry entry = cursor.next();
        path.resize(cursor.pathLength());
        path += '/';
        path += entry.name;
        result.emplace_back(path);
        if (entry.isFolder && !isPackageName(entry.name)) {
            cursors.emplace_back(path, O_NOFOLLOW);
        }
    }
    return result;
}

bool isPackageName(std::string_view name) {
    const std::size_t dot = name.rfind('.');
    if (dot == std::string_view::npos) {
        return false;
    }
    const std::string extension = asciiLowercased(name.substr(dot + 1));
    return std::find(packageExtensions.begin(), packageExtensions.end(), extension) !=
           packageExtensions.end();
}

} // namespace kestrel
