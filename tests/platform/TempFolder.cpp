#include "TempFolder.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <system_error>

namespace kestrel {

namespace fs = std::filesystem;

TempFolder::TempFolder() : path_((fs::temp_directory_path() / "kestrel-test-XXXXXX").string()) {
    if (::mkdtemp(path_.data()) == nullptr) {
        throw std::runtime_error("no temporary folder: " + path_);
    }
    fs::permissions(path_, fs::perms(0755));
}

TempFolder::~TempFolder() {
    std::error_code ignored;
    fs::remove_all(path_, ignored);
}

FileURL TempFolder::url(std::string_view relative) const {
    return url().appendingPathComponent(relative);
}

FileURL TempFolder::addFile(std::string_view relative) const {
    FileURL location = url(relative);
    fs::create_directories(location.deletingLastPathComponent().path());
    if (!std::ofstream(location.path())) {
        throw std::runtime_error("cannot make " + location.path());
    }
    return location;
}

FileURL TempFolder::addFolder(std::string_view relative) const {
    FileURL location = url(relative);
    fs::create_directories(location.path());
    return location;
}

void TempFolder::addLink(std::string_view relative, const std::string& target) const {
    fs::create_symlink(target, url(relative).path());
}

} // namespace kestrel
