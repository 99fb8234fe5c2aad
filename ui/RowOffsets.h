#pragma once

#include <QtGlobal>

#include <cstddef>
#include <utility>
#include <vector>

namespace kestrel {

/// Where the rows of a list lie below one another, in pixels from the list's top.
class RowOffsets {
  public:
    /// Replaces all rows by rows of these heights, none of them negative.
    void assign(const std::vector<int>& heights);

    std::size_t count() const noexcept { return tops_.size() - 1; }

    /// The height of all rows together.
    qint64 total() const noexcept { return tops_.back(); }

    qint64 top(std::size_t row) const { return tops_.at(row); }

    int height(std::size_t row) const;

    /// The rows that reach into the stretch from `from` to before `to`: the first one and the one
    /// after the last.
    std::pair<std::size_t, std::size_t> rowsBetween(qint64 from, qint64 to) const;

  private:
    /// The top of every row, and the end of the last one.
    std::vector<qint64> tops_{0};
};

} // namespace kestrel
