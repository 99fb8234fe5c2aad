#include "FileSystem.h"

#include <sys/stat.h>

#include <cerrno>

namespace kestrel {

namespace {

std::error_code errorOf(int number) {
    return {number, std::generic_category()};
}

/// Returns no error iff it is a folder.
std::error_code checkFolder(const FileURL& folder) noexcept {
    struct stat status = {};

    if (::stat(folder.path().c_str(), &status) != 0) {
        return errorOf(errno);
    }
    return errorOf(S_ISDIR(status.st_mode) ? 0 : ENOTDIR);
}

} // namespace

bool fileExists(const FileURL& url) noexcept {
    struct stat status = {};

    return ::stat(url.path().c_str(), &status) == 0;
}

bool isFolder(const FileURL& url) noexcept {
    return !checkFolder(url);
}

std::error_code createFolders(const FileURL& folder) {
    const std::error_code found = checkFolder(folder);
    if (found != std::errc::no_such_file_or_directory) {
        return found;
    }
    // The root always exists, so the recursion terminates.
    if (const std::error_code error = createFolders(folder.deletingLastPathComponent())) {
        return error;
    }
    constexpr mode_t everyone = 0777;
    if (::mkdir(folder.path().c_str(), everyone) == 0) {
        return {};
    }
    const int error = errno;
    // Another process may have created it first.
    return error == EEXIST && !checkFolder(folder) ? std::error_code() : errorOf(error);
}

} // namespace kestrel
