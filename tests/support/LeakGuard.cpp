#include "LeakGuard.h"

#include "WaitUntil.h"

#include <gtest/gtest.h>

#include <thread>

namespace kestrel::test {

LeakGuard::LeakGuard() {
    // Thread sanitizer starts a thread of its own together with the program's first.
    std::thread([] {}).join();
    before_ = ProcessCounts::now();
}

LeakGuard::~LeakGuard() {
    ProcessCounts after;
    const bool isClean = waitUntil([&] {
        after = ProcessCounts::now();
        return after.descriptors <= before_.descriptors && after.children <= before_.children &&
               after.threads <= before_.threads;
    });
    EXPECT_TRUE(isClean) << "before: " << before_.text() << "; after: " << after.text();
}

} // namespace kestrel::test
