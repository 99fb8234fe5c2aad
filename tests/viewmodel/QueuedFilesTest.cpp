#include "QueuedFiles.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

namespace kestrel {
namespace {

FileURL track(int number) {
    return FileURL("/Album " + std::to_string(number % 7) + "/" + std::to_string(number) + ".opus");
}

void append(std::vector<ConversionJob>& queue, int from, int to) {
    for (int number = from; number < to; ++number) {
        queue.emplace_back(track(number));
    }
}

TEST(QueuedFilesTest, areNoneInAnEmptyQueue) {
    const std::vector<ConversionJob> queue;
    EXPECT_FALSE(QueuedFiles(queue).contains(track(0)));
}

TEST(QueuedFilesTest, areThoseOfTheQueueHoweverItGrows) {
    for (const std::size_t expected : {0U, 1000U}) {
        std::vector<ConversionJob> queue;
        append(queue, 0, 10);
        QueuedFiles files(queue, expected);
        int count = 10;
        for (const int more : {0, 1, 5, 100, 3000}) {
            append(queue, count, count + more);
            files.update();
            count += more;
            for (int number = 0; number < count; ++number) {
                ASSERT_TRUE(files.contains(track(number))) << number << " of " << count;
            }
            for (int number = count; number < count + 1000; ++number) {
                ASSERT_FALSE(files.contains(track(number))) << number << " of " << count;
            }
        }
    }
}

TEST(QueuedFilesTest, areThoseOfTheLastUpdate) {
    std::vector<ConversionJob> queue;
    QueuedFiles files(queue);
    append(queue, 0, 1);
    EXPECT_FALSE(files.contains(track(0)));
    files.update();
    EXPECT_TRUE(files.contains(track(0)));
}

TEST(QueuedFilesTest, areTheSameInEverySpelling) {
    std::vector<ConversionJob> queue;
    queue.emplace_back(FileURL("/a/./x/..//b.opus"));
    queue.emplace_back(FileURL("/a/c.opus"));
    const QueuedFiles files(queue);
    for (const char* spelling : {"/a/b.opus", "/a/./b.opus", "/a//c.opus", "/../a/c.opus"}) {
        EXPECT_TRUE(files.contains(FileURL(spelling))) << spelling;
    }
    EXPECT_FALSE(files.contains(FileURL("/a/x/b.opus")));
}

TEST(QueuedFilesTest, mayBeQueuedMoreThanOnce) {
    std::vector<ConversionJob> queue;
    for (int number = 0; number < 100; ++number) {
        append(queue, 3, 4);
    }
    append(queue, 4, 5);
    const QueuedFiles files(queue);
    EXPECT_TRUE(files.contains(track(3)));
    EXPECT_TRUE(files.contains(track(4)));
    EXPECT_FALSE(files.contains(track(5)));
}

/// Two files whose hashes have the same lower 32 bits.
std::optional<std::pair<FileURL, FileURL>> collidingFiles() {
    std::unordered_map<std::uint32_t, int> known;
    // With so many, there are a dozen such pairs on average.
    constexpr int enough = 320'000;
    for (int number = 0; number < enough; ++number) {
        const auto hash = static_cast<std::uint32_t>(std::hash<FileURL>()(track(number)));
        if (const auto [other, isNew] = known.emplace(hash, number); !isNew) {
            return std::pair(track(other->second), track(number));
        }
    }
    return std::nullopt;
}

TEST(QueuedFilesTest, areToldApartThoughTheirHashesAreEqual) {
    const auto files = collidingFiles();
    ASSERT_TRUE(files);
    std::vector<ConversionJob> queue;
    queue.emplace_back(files->first);
    QueuedFiles queued(queue);
    EXPECT_FALSE(queued.contains(files->second));
    queue.emplace_back(files->second);
    queued.update();
    EXPECT_TRUE(queued.contains(files->first));
    EXPECT_TRUE(queued.contains(files->second));
}

} // namespace
} // namespace kestrel
