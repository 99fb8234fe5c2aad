#include "UUID.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <functional>
#include <future>
#include <unordered_set>
#include <vector>

namespace kestrel {
namespace {

TEST(UUID, isUniqueAcrossThreads) {
    constexpr std::size_t count = 10'000;
    const auto draw = [] {
        std::vector<UUID> drawn;
        while (drawn.size() < count) {
            drawn.push_back(UUID::random());
        }
        return drawn;
    };
    std::future<std::vector<UUID>> otherThread = std::async(std::launch::async, draw);
    std::unordered_set<UUID> seen;
    for (const std::vector<UUID>& drawn : {draw(), otherThread.get()}) {
        seen.insert(drawn.begin(), drawn.end());
    }
    EXPECT_EQ(seen.size(), 2 * count);
}

TEST(UUID, hasAStableAndUniformHash) {
    std::unordered_set<std::size_t> hashes;
    for (int i = 0; i < 1000; ++i) {
        const UUID id = UUID::random();
        const std::size_t hash = std::hash<UUID>()(id);
        hashes.insert(hash);
        EXPECT_EQ(std::hash<UUID>()(UUID(id)), hash);
    }
    EXPECT_GE(hashes.size(), 999U);
}

} // namespace
} // namespace kestrel
