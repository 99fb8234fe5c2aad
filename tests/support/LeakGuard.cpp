#include "LeakGuard.h"

#include "WaitUntil.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <sstream>
#include <thread>

namespace kestrel::test {

namespace {

std::size_t countEntries(const char* folder) {
    const std::filesystem::directory_iterator entries(folder);
    return static_cast<std::size_t>(std::distance(begin(entries), end(entries)));
}

} // namespace

LeakGuard::Counts LeakGuard::Counts::now() {
    Counts counts;
    counts.descriptors = countEntries("/proc/self/fd");
    for (const auto& thread : std::filesystem::directory_iterator("/proc/self/task")) {
        ++counts.threads;
        std::ifstream children(thread.path() / "children");
        counts.children += static_cast<std::size_t>(std::distance(
            std::istream_iterator<std::string>(children), std::istream_iterator<std::string>()));
    }
    return counts;
}

std::string LeakGuard::Counts::text() const {
    std::ostringstream out;
    out << descriptors << " descriptors, " << children << " children, " << threads << " threads";
    return out.str();
}

LeakGuard::LeakGuard() {
    // A race detector starts a thread of its own together with the first that the program starts.
    std::thread([] {}).join();
    before_ = Counts::now();
}

LeakGuard::~LeakGuard() {
    Counts after;
    const bool isClean = waitUntil([&] {
        after = Counts::now();
        return after.descriptors <= before_.descriptors && after.children <= before_.children &&
               after.threads <= before_.threads;
    });
    EXPECT_TRUE(isClean) << "before: " << before_.text() << "; after: " << after.text();
}

} // namespace kestrel::test
