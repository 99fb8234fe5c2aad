#include "FileSystem.h"

#include <sys/stat.h>

namespace kestrel {

bool fileExists(const FileURL& url) noexcept {
    struct stat status = {};

    return ::stat(url.path().c_str(), &status) == 0;
}

bool isFolder(const FileURL& url) noexcept {
    struct stat status = {};

    return ::stat(url.path().c_str(), &status) == 0 && S_ISDIR(status.st_mode);
}

} // namespace kestrel
