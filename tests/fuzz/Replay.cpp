// Stands in for the fuzzer where the compiler brings none: runs the target once with every file of
// the folders that it is given. Fails where there is no file.

#include "FuzzTarget.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <vector>

namespace {

std::vector<std::filesystem::path> filesIn(const char* folder) {
    std::vector<std::filesystem::path> files;
    for (const auto& entry : std::filesystem::directory_iterator(folder)) {
        files.push_back(entry.path());
    }
    std::sort(files.begin(), files.end());
    return files;
}

std::vector<std::uint8_t> contents(const std::filesystem::path& file) {
    std::ifstream stream(file, std::ios::binary);
    stream.exceptions(std::ios::badbit | std::ios::failbit);
    return {std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
}

} // namespace

int main(int argc, char** argv) {
    std::size_t count = 0;
    for (int i = 1; i < argc; ++i) {
        for (const std::filesystem::path& file : filesIn(argv[i])) {
            // Said before, so that the last one said is the one that fails.
            std::cout << file.filename().native() << std::endl;
            const std::vector<std::uint8_t> bytes = contents(file);
            static_cast<void>(LLVMFuzzerTestOneInput(bytes.data(), bytes.size()));
            ++count;
        }
    }
    std::cout << count << " inputs\n";
    return count == 0 ? 1 : 0;
}
