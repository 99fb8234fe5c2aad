#include "RowOffsets.h"

#include <algorithm>

namespace kestrel {

void RowOffsets::assign(const std::vector<int>& heights) {
    tops_.resize(1);
    tops_.reserve(heights.size() + 1);
    for (const int height : heights) {
        tops_.push_back(tops_.back() + height);
    }
}

int RowOffsets::height(std::size_t row) const {
    return static_cast<int>(tops_.at(row + 1) - tops_.at(row));
}

std::pair<std::size_t, std::size_t> RowOffsets::rowsBetween(qint64 from, qint64 to) const {
    // The first row ends below `from`; the first row that starts at or after `to` is out again.
    const auto ends = tops_.begin() + 1;
    const auto first = std::upper_bound(ends, tops_.end(), from);
    const auto last = std::lower_bound(tops_.begin(), tops_.end() - 1, to);
    const auto firstRow = static_cast<std::size_t>(first - ends);
    const auto endRow = static_cast<std::size_t>(last - tops_.begin());
    return {firstRow, std::max(firstRow, endRow)};
}

} // namespace kestrel
