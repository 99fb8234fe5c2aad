#include "ProcessCounts.h"

#include <filesystem>
#include <fstream>
#include <iterator>
#include <sstream>

namespace kestrel::test {

ProcessCounts ProcessCounts::now() {
    ProcessCounts counts;
    const std::filesystem::directory_iterator descriptors("/proc/self/fd");
    counts.descriptors =
        static_cast<std::size_t>(std::distance(begin(descriptors), end(descriptors)));
    for (const auto& thread : std::filesystem::directory_iterator("/proc/self/task")) {
        ++counts.threads;
        std::ifstream children(thread.path() / "children");
        counts.children += static_cast<std::size_t>(std::distance(
            std::istream_iterator<std::string>(children), std::istream_iterator<std::string>()));
    }
    return counts;
}

std::string ProcessCounts::text() const {
    std::ostringstream out;
    out << descriptors << " descriptors, " << children << " children, " << threads << " threads";
    return out.str();
}

} // namespace kestrel::test
