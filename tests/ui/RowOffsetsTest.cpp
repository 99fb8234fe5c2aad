#include "RowOffsets.h"

#include <gtest/gtest.h>

namespace kestrel {
namespace {

using Range = std::pair<std::size_t, std::size_t>;

TEST(RowOffsets, areEmptyAtFirst) {
    const RowOffsets offsets;
    EXPECT_EQ(offsets.count(), 0U);
    EXPECT_EQ(offsets.total(), 0);
    EXPECT_EQ(offsets.rowsBetween(0, 100), Range(0, 0));
}

TEST(RowOffsets, addUpHeights) {
    RowOffsets offsets;
    offsets.assign({10, 20, 30});
    EXPECT_EQ(offsets.count(), 3U);
    EXPECT_EQ(offsets.top(0), 0);
    EXPECT_EQ(offsets.top(2), 30);
    EXPECT_EQ(offsets.height(1), 20);
    EXPECT_EQ(offsets.total(), 60);
}

TEST(RowOffsets, findTheRowsThatReachIntoAStretch) {
    RowOffsets offsets;
    offsets.assign({10, 20, 30});
    EXPECT_EQ(offsets.rowsBetween(0, 60), Range(0, 3));
    EXPECT_EQ(offsets.rowsBetween(0, 10), Range(0, 1));
    EXPECT_EQ(offsets.rowsBetween(9, 11), Range(0, 2));
    EXPECT_EQ(offsets.rowsBetween(10, 30), Range(1, 2));
    EXPECT_EQ(offsets.rowsBetween(29, 31), Range(1, 3));
    EXPECT_EQ(offsets.rowsBetween(60, 90), Range(3, 3));
}

TEST(RowOffsets, countBeyondThirtyTwoBits) {
    RowOffsets offsets;
    offsets.assign({2'000'000'000, 2'000'000'000, 5});
    EXPECT_EQ(offsets.top(2), 4'000'000'000);
    EXPECT_EQ(offsets.rowsBetween(4'000'000'000, 4'000'000'001), Range(2, 3));
}

TEST(RowOffsets, areReplacedAsAWhole) {
    RowOffsets offsets;
    offsets.assign({10, 20, 30});
    offsets.assign({5});
    EXPECT_EQ(offsets.count(), 1U);
    EXPECT_EQ(offsets.total(), 5);
}

} // namespace
} // namespace kestrel
