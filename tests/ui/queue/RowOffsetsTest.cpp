#include "RowOffsets.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <numeric>
#include <random>
#include <string>
#include <utility>
#include <vector>

namespace kestrel {
namespace {

using Range = std::pair<std::size_t, std::size_t>;

TEST(RowOffsetsTest, areEmptyAtFirst) {
    const RowOffsets offsets;
    EXPECT_EQ(offsets.count(), 0U);
    EXPECT_EQ(offsets.total(), 0);
    EXPECT_EQ(offsets.rowsBetween(0, 100), Range(0, 0));
}

TEST(RowOffsetsTest, addUpHeights) {
    RowOffsets offsets;
    offsets.assign({10, 20, 30});
    EXPECT_EQ(offsets.count(), 3U);
    EXPECT_EQ(offsets.top(0), 0);
    EXPECT_EQ(offsets.top(2), 30);
    EXPECT_EQ(offsets.height(1), 20);
    EXPECT_EQ(offsets.total(), 60);
}

TEST(RowOffsetsTest, findTheRowsThatIntersectARange) {
    RowOffsets offsets;
    offsets.assign({10, 20, 30});
    EXPECT_EQ(offsets.rowsBetween(0, 60), Range(0, 3));
    EXPECT_EQ(offsets.rowsBetween(0, 10), Range(0, 1));
    EXPECT_EQ(offsets.rowsBetween(9, 11), Range(0, 2));
    EXPECT_EQ(offsets.rowsBetween(10, 30), Range(1, 2));
    EXPECT_EQ(offsets.rowsBetween(29, 31), Range(1, 3));
    EXPECT_EQ(offsets.rowsBetween(60, 90), Range(3, 3));
}

TEST(RowOffsetsTest, countBeyondThirtyTwoBits) {
    RowOffsets offsets;
    offsets.assign({2'000'000'000, 2'000'000'000, 5});
    EXPECT_EQ(offsets.top(2), 4'000'000'000);
    EXPECT_EQ(offsets.rowsBetween(4'000'000'000, 4'000'000'001), Range(2, 3));
}

TEST(RowOffsetsTest, moveTheRowsBelowOneThatChanges) {
    RowOffsets offsets;
    offsets.assign({10, 20, 30});
    offsets.setHeight(1, 5);
    EXPECT_EQ(offsets.height(1), 5);
    EXPECT_EQ(offsets.top(1), 10);
    EXPECT_EQ(offsets.top(2), 15);
    EXPECT_EQ(offsets.total(), 45);
    EXPECT_EQ(offsets.rowAt(14), 1U);
    EXPECT_EQ(offsets.rowAt(15), 2U);
    EXPECT_EQ(offsets.rowAt(45), 3U);
}

/// Reference implementation.
class NaiveOffsets {
  public:
    std::vector<int> heights;

    qint64 top(std::size_t row) const {
        return std::accumulate(heights.begin(), heights.begin() + static_cast<std::ptrdiff_t>(row),
                               qint64{0});
    }

    Range rowsBetween(qint64 from, qint64 to) const {
        std::size_t first = 0;
        while (first < heights.size() && top(first + 1) <= from) {
            ++first;
        }
        std::size_t end = first;
        while (end < heights.size() && top(end) < to) {
            ++end;
        }
        return {first, end};
    }
};

TEST(RowOffsetsTest, agreeWithTheReferenceImplementation) {
    const unsigned seed = std::random_device{}();
    SCOPED_TRACE("seed " + std::to_string(seed));
    std::mt19937 random(seed);
    const auto number = [&random](qint64 least, qint64 most) {
        return std::uniform_int_distribution<qint64>(least, most)(random);
    };
    for (int round = 0; round < 60; ++round) {
        NaiveOffsets naive;
        const bool isHuge = number(0, 3) == 0;
        naive.heights.resize(static_cast<std::size_t>(number(0, 70)));
        const auto height = [&] {
            return number(0, 4) == 0 ? 0 : static_cast<int>(number(1, isHuge ? 2'000'000'000 : 90));
        };
        std::generate(naive.heights.begin(), naive.heights.end(), height);
        RowOffsets offsets;
        offsets.assign(naive.heights);
        for (int step = 0; step < 60; ++step) {
            if (number(0, 3) == 0) {
                naive.heights.push_back(height());
                offsets.append(naive.heights.back());
            }
            if (!naive.heights.empty() && number(0, 3) == 0) {
                const qint64 row = number(0, static_cast<int>(naive.heights.size()) - 1);
                naive.heights.erase(naive.heights.begin() + static_cast<std::ptrdiff_t>(row));
                offsets.remove(static_cast<std::size_t>(row));
            }
            const std::size_t count = naive.heights.size();
            ASSERT_EQ(offsets.count(), count);
            if (count > 0) {
                const auto row = static_cast<std::size_t>(number(0, static_cast<int>(count) - 1));
                naive.heights[row] = height();
                offsets.setHeight(row, naive.heights[row]);
            }
            const auto row = static_cast<std::size_t>(number(0, static_cast<int>(count)));
            ASSERT_EQ(offsets.top(row), naive.top(row));
            ASSERT_EQ(offsets.total(), naive.top(count));
            const qint64 from = number(-100, offsets.total() + 100);
            const qint64 to = from + number(0, isHuge ? offsets.total() : 300);
            ASSERT_EQ(offsets.rowsBetween(from, to), naive.rowsBetween(from, to))
                << from << " to " << to;
            ASSERT_EQ(offsets.rowAt(from), naive.rowsBetween(from, from).first);
        }
    }
}

TEST(RowOffsetsTest, growRowByRow) {
    RowOffsets offsets;
    for (int row = 0; row < 100; ++row) {
        offsets.append(10 + row);
    }
    EXPECT_EQ(offsets.count(), 100U);
    EXPECT_EQ(offsets.height(99), 109);
    EXPECT_EQ(offsets.top(100), offsets.total());
    EXPECT_EQ(offsets.total(), 5950);
    offsets.setHeight(63, 1073);
    EXPECT_EQ(offsets.top(63), 2583);
    EXPECT_EQ(offsets.top(64), 3656);
    EXPECT_EQ(offsets.rowAt(3655), 63U);
}

TEST(RowOffsetsTest, closeTheGapOfARemovedRow) {
    RowOffsets offsets;
    offsets.assign({10, 20, 30});
    offsets.remove(1);
    EXPECT_EQ(offsets.count(), 2U);
    EXPECT_EQ(offsets.height(1), 30);
    EXPECT_EQ(offsets.top(1), 10);
    EXPECT_EQ(offsets.total(), 40);
    offsets.remove(1);
    offsets.remove(0);
    EXPECT_EQ(offsets.count(), 0U);
    EXPECT_EQ(offsets.total(), 0);
}

TEST(RowOffsetsTest, areReplacedAsAWhole) {
    RowOffsets offsets;
    offsets.assign({10, 20, 30});
    offsets.assign({5});
    EXPECT_EQ(offsets.count(), 1U);
    EXPECT_EQ(offsets.total(), 5);
}

} // namespace
} // namespace kestrel
