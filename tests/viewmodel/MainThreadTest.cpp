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

TEST(MainThread, runsTasksLaterAndInOrder) {
    std::vector<int> ran;
    // More than other threads may queue.
    for (int i = 0; i < 3000; ++i) {
        runOnMainThread([&ran, i] { ran.push_back(i); });
    }
    EXPECT_TRUE(ran.empty());
    ASSERT_TRUE(runUntil([&ran] { return ran.size() == 3000; }));
    std::vector<int> expected(3000);
    std::iota(expected.begin(), expected.end(), 0);
    EXPECT_EQ(ran, expected);
}

TEST(MainThread, runsEachTaskOnceInItsOwnEventLoopIteration) {
    int first = 0;
    int second = 0;
    runOnMainThread([&] {
        ++first;
        // A nested event loop runs the other tasks.
        EXPECT_TRUE(runUntil([&second] { return second > 0; }));
    });
    runOnMainThread([&] { ++second; });
    ASSERT_TRUE(runUntil([&first] { return first > 0; }));
    QCoreApplication::processEvents();
    EXPECT_EQ(first, 1);
    EXPECT_EQ(second, 1);
}

TEST(MainThread, runsTasksOfOtherThreadsOnTheMainThread) {
    const QThread* const mainThread = QThread::currentThread();
    const QThread* seen = nullptr;
    std::thread([&seen] { runOnMainThread([&seen] { seen = QThread::currentThread(); }); }).join();
    EXPECT_EQ(seen, nullptr);
    ASSERT_TRUE(runUntil([&seen] { return seen != nullptr; }));
    EXPECT_EQ(seen, mainThread);
}

TEST(MainThread, queues1024TasksWithoutBlocking) {
    bool isDrained = false;
    runOnMainThread([&isDrained] { isDrained = true; });
    ASSERT_TRUE(runUntil([&isDrained] { return isDrained; }));
    std::atomic<int> posted = 0;
    std::atomic<int> ran = 0;
    std::thread worker([&] {
        for (int i = 0; i < 1024; ++i) {
            runOnMainThread([&ran] { ++ran; });
            ++posted;
        }
    });
    EXPECT_TRUE(waitUntil([&posted] { return posted == 1024; }));
    EXPECT_EQ(ran, 0);
    EXPECT_TRUE(runUntil([&ran] { return ran == 1024; }));
    worker.join();
}

TEST(MainThread, blocksAProducerThatIsTooFast) {
    constexpr int count = 20'000;
    constexpr int bound = 2'000;
    std::atomic<int> posted = 0;
    int ran = 0;
    int mostQueued = 0;
    std::thread worker([&] {
        for (int i = 0; i < count; ++i) {
            runOnMainThread([&] {
                mostQueued = std::max(mostQueued, posted - ran);
                ++ran;
            });
            ++posted;
        }
    });
    EXPECT_TRUE(waitUntil([&posted] { return posted > bound / 4; }));
    EXPECT_TRUE(runUntil([&ran] { return ran == count; }));
    worker.join();
    EXPECT_LE(mostQueued, bound);
}

} // namespace
} // namespace kestrel::test
