#include "MainThread.h"

#include "ViewModelFixture.h"
#include "WaitUntil.h"

#include <QThread>

#include <algorithm>
#include <atomic>
#include <numeric>
#include <thread>
#include <vector>

namespace kestrel::test {
namespace {

TEST(MainThread, runsTasksLaterAndInTheirOrder) {
    std::vector<int> ran;
    // More than may wait for another thread.
    for (int i = 0; i < 3000; ++i) {
        runOnMainThread([&ran, i] { ran.push_back(i); });
    }
    EXPECT_TRUE(ran.empty());
    ASSERT_TRUE(runUntil([&ran] { return ran.size() == 3000; }));
    std::vector<int> expected(3000);
    std::iota(expected.begin(), expected.end(), 0);
    EXPECT_EQ(ran, expected);
}

TEST(MainThread, runsEachTaskOnceAndInATurnOfItsOwn) {
    int first = 0;
    int second = 0;
    runOnMainThread([&] {
        ++first;
        // An event loop inside a task is not held up by it.
        EXPECT_TRUE(runUntil([&second] { return second > 0; }));
    });
    runOnMainThread([&] { ++second; });
    ASSERT_TRUE(runUntil([&first] { return first > 0; }));
    QCoreApplication::processEvents();
    EXPECT_EQ(first, 1);
    EXPECT_EQ(second, 1);
}

TEST(MainThread, runsTheTasksOfOtherThreadsItself) {
    const QThread* const mainThread = QThread::currentThread();
    const QThread* seen = nullptr;
    std::thread([&seen] { runOnMainThread([&seen] { seen = QThread::currentThread(); }); }).join();
    EXPECT_EQ(seen, nullptr);
    ASSERT_TRUE(runUntil([&seen] { return seen != nullptr; }));
    EXPECT_EQ(seen, mainThread);
}

TEST(MainThread, letsOtherThreadsBe1024TasksAhead) {
    bool isUpToDate = false;
    runOnMainThread([&isUpToDate] { isUpToDate = true; });
    ASSERT_TRUE(runUntil([&isUpToDate] { return isUpToDate; }));
    std::atomic<int> handedOver = 0;
    std::atomic<int> ran = 0;
    std::thread worker([&] {
        for (int i = 0; i < 1024; ++i) {
            runOnMainThread([&ran] { ++ran; });
            ++handedOver;
        }
    });
    EXPECT_TRUE(waitUntil([&handedOver] { return handedOver == 1024; }));
    EXPECT_EQ(ran, 0);
    EXPECT_TRUE(runUntil([&ran] { return ran == 1024; }));
    worker.join();
}

TEST(MainThread, holdsUpAThreadThatIsFasterThanItself) {
    constexpr int count = 20'000;
    constexpr int bound = 2'000;
    std::atomic<int> handedOver = 0;
    int ran = 0;
    int mostWaiting = 0;
    std::thread worker([&] {
        for (int i = 0; i < count; ++i) {
            runOnMainThread([&] {
                mostWaiting = std::max(mostWaiting, handedOver - ran);
                ++ran;
            });
            ++handedOver;
        }
    });
    EXPECT_TRUE(waitUntil([&handedOver] { return handedOver > bound / 4; }));
    EXPECT_TRUE(runUntil([&ran] { return ran == count; }));
    worker.join();
    EXPECT_LE(mostWaiting, bound);
}

} // namespace
} // namespace kestrel::test
