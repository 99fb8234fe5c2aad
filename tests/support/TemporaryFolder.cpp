#include "TemporaryFolder.h"

#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>

namespace kestrel::test {

namespace {

FileURL makeTemporaryFolder() {
    std::string path = (std::filesystem::temp_directory_path() / "kestrel-test-XXXXXX").string();
    if (::mkdtemp(path.data()) == nullptr) {
        throw std::runtime_error("no temporary folder");
    }
    return FileURL(path);
}

} // namespace

TemporaryFolder::TemporaryFolder() : url_(makeTemporaryFolder()) {}

TemporaryFolder::~TemporaryFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(url_.path(), ignored);
}

FileURL TemporaryFolder::write(std::string_view name, std::string_view bytes) const {
    FileURL url = file(name);
    std::filesystem::create_directories(url.deletingLastPathComponent().path());
    std::ofstream(url.path(), std::ios::binary) << bytes;
    return url;
}

FileURL TemporaryFolder::makeFolder(std::string_view name) const {
    FileURL url = file(name);
    std::filesystem::create_directories(url.path());
    return url;
}

std::string contents(const FileURL& url) {
    std::ifstream in(url.path(), std::ios::binary);
    return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

} // namespace kestrel::test
