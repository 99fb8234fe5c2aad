#include "ExecutableSearch.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <string>
#include <utility>

namespace kestrel {

namespace {

bool isExecutableFile(const std::string& path) noexcept {
    struct stat status = {};

    return ::stat(path.c_str(), &status) == 0 && S_ISREG(status.st_mode) &&
           ::faccessat(AT_FDCWD, path.c_str(), X_OK, AT_EACCESS) == 0;
}

} // namespace

std::optional<FileURL> firstExecutable(std::span<const std::string_view> paths) {
    for (const std::string_view candidate : paths) {
        std::string path(candidate);
        if (isExecutableFile(path)) {
            return FileURL(std::move(path));
        }
    }
    return std::nullopt;
}

} // namespace kestrel
