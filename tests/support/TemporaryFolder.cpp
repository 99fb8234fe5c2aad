#include "TemporaryFolder.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <system_error>
#include <utility>

#include <sys/stat.h>

namespace kestrel::test {

namespace {

FileURL makeTemporaryFolder() {
    std::string path = (std::filesystem::temp_directory_path() / "kestrel-test-XXXXXX").string();
    if (::mkdtemp(path.data()) == nullptr) {
        throw std::runtime_error("no temporary folder");
    }
    // Tests that drop privileges must be able to read the folder, whatever the inherited umask.
    ::umask(S_IWGRP | S_IWOTH);
    std::filesystem::permissions(path, static_cast<std::filesystem::perms>(0755));
    return FileURL(std::move(path));
}

} // namespace

TemporaryFolder::TemporaryFolder() : url_(makeTemporaryFolder()) {}

TemporaryFolder::~TemporaryFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(url_.path(), ignored);
}

bool TemporaryFolder::has(std::string_view name) const {
    return std::filesystem::exists(file(name).path());
}

FileURL TemporaryFolder::write(std::string_view name, std::string_view bytes) const {
    FileURL url = file(name);
    std::filesystem::create_directories(url.deletingLastPathComponent().path());
    if (!(std::ofstream(url.path(), std::ios::binary) << bytes)) {
        throw std::runtime_error("cannot write " + url.path());
    }
    return url;
}

FileURL TemporaryFolder::makeFolder(std::string_view name) const {
    FileURL url = file(name);
    std::filesystem::create_directories(url.path());
    return url;
}

void TemporaryFolder::makeLink(std::string_view name, const std::string& target) const {
    std::filesystem::create_symlink(target, file(name).path());
}

std::string contents(const FileURL& url) {
    std::ifstream in(url.path(), std::ios::binary);
    return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

} // namespace kestrel::test
