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

/// Extensions that are everyday words as well ("pages", "numbers", "key", "action") are left out: a
/// music folder may be named so, and nobody would find out why its tracks are missing.
constexpr std::array<std::string_view, 37> packageExtensions = {
    // Programs and what extends them.
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
    // Installers, disk images and what programs are made from.
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

/// Null where the folder cannot be opened.
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

/// A symbolic link is no folder here, whatever it leads to.
bool isFolderEntry(const Directory& directory, const dirent& entry) {
    if (entry.d_type != DT_UNKNOWN) {
        return entry.d_type == DT_DIR;
    }

    struct stat status = {};

    return ::fstatat(::dirfd(directory.get()), entry.d_name, &status, AT_SYMLINK_NOFOLLOW) == 0 &&
           S_ISDIR(status.st_mode);
}

/// What one folder holds, hidden entries left out, and how far the walk has come in it.
class Level {
  public:
    struct Entry {
        std::string_view name;
        bool isFolder = false;
    };

    /// Reads the folder and closes it again, so that the depth of a tree costs no descriptors.
    Level(const std::string& path, int extraFlags) : pathLength_(path == "/" ? 0 : path.size()) {
        if (const Directory directory = openFolder(path, extraFlags)) {
            // NOLINTNEXTLINE(concurrency-mt-unsafe): no other thread knows the stream.
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

    /// How much of an entry's path is the folder's own.
    std::size_t pathLength() const { return pathLength_; }

    bool isAtEnd() const { return next_ == spans_.size(); }

    /// Valid as long as this object stays where it is.
    Entry takeNext() {
        const Span& span = spans_[next_++];
        return {name(span), span.isFolder};
    }

  private:
    /// A part of `names_`, which moves while it grows.
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
    std::vector<Level> levels;
    levels.emplace_back(path, 0);
    while (!levels.empty()) {
        Level& level = levels.back();
        if (level.isAtEnd()) {
            levels.pop_back();
            continue;
        }
        const Level::Entry entry = level.takeNext();
        path.resize(level.pathLength());
        path += '/';
        path += entry.name;
        result.emplace_back(path);
        if (entry.isFolder && !isPackageName(entry.name)) {
            levels.emplace_back(path, O_NOFOLLOW);
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
