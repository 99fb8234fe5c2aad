#include "RowOffsets.h"

#include <algorithm>
#include <bit>

namespace kestrel {
namespace {

std::size_t lowestBit(std::size_t number) {
    return number & (~number + 1);
}

} // namespace

void RowOffsets::assign(std::vector<int> heights) {
    heights_ = std::move(heights);
    sums_.assign(heights_.begin(), heights_.end());
    total_ = 0;
    for (std::size_t number = 1; number <= sums_.size(); ++number) {
        total_ += heights_[number - 1];
        const std::size_t next = number + lowestBit(number);
        if (next <= sums_.size()) {
            sums_[next - 1] += sums_[number - 1];
        }
    }
}

void RowOffsets::setHeight(std::size_t row, int height) {
    const qint64 difference = qint64{height} - heights_.at(row);
    heights_[row] = height;
    total_ += difference;
    for (std::size_t number = row + 1; number <= sums_.size(); number += lowestBit(number)) {
        sums_[number - 1] += difference;
    }
}

void RowOffsets::append(int height) {
    heights_.push_back(height);
    total_ += height;
    const std::size_t number = heights_.size();
    // A node's sum is its own row and the sums of its children, of 1, 2, 4… rows, which end with
    // the row before.
    qint64 sum = height;
    for (std::size_t size = 1; size < lowestBit(number); size *= 2) {
        sum += sums_[number - size - 1];
    }
    sums_.push_back(sum);
}

void RowOffsets::remove(std::size_t row) {
    std::vector<int> heights = std::move(heights_);
    heights.erase(heights.begin() + static_cast<std::ptrdiff_t>(row));
    assign(std::move(heights));
}

qint64 RowOffsets::top(std::size_t row) const {
    qint64 sum = 0;
    for (std::size_t number = row; number > 0; number -= lowestBit(number)) {
        sum += sums_.at(number - 1);
    }
    return sum;
}

std::size_t RowOffsets::rowsWithin(qint64 limit) const {
    std::size_t rows = 0;
    for (std::size_t step = std::bit_floor(sums_.size()); step > 0; step /= 2) {
        if (rows + step <= sums_.size() && sums_[rows + step - 1] <= limit) {
            rows += step;
            limit -= sums_[rows - 1];
        }
    }
    return rows;
}

std::size_t RowOffsets::rowAt(qint64 position) const {
    return rowsWithin(position);
}

std::pair<std::size_t, std::size_t> RowOffsets::rowsBetween(qint64 from, qint64 to) const {
    const std::size_t first = rowAt(from);
    // The row after those that end before `to` is the last one that starts before it.
    const std::size_t end = to > 0 ? std::min(rowsWithin(to - 1) + 1, count()) : 0;
    return {first, std::max(first, end)};
}

} // namespace kestrel
