#pragma once

#include <QtGlobal>

#include <cstddef>
#include <utility>
#include <vector>

namespace kestrel {

/// Where the rows of a list lie below one another, in pixels from the top of the first one.
///
/// A Fenwick tree over the heights: setting all of them takes one pass, everything else the
/// logarithm of their number.
class RowOffsets {
  public:
    /// Replaces all rows by rows of these heights, none of them negative.
    void assign(std::vector<int> heights);

    /// Gives one row another height, not negative.
    void setHeight(std::size_t row, int height);

    std::size_t count() const noexcept { return heights_.size(); }

    /// The height of all rows together.
    qint64 total() const noexcept { return total_; }

    /// The end of the last row for the row after it.
    qint64 top(std::size_t row) const;

    int height(std::size_t row) const { return heights_.at(row); }

    /// Of all rows, for walks over them.
    const std::vector<int>& heights() const noexcept { return heights_; }

    /// The first row that ends below a position; `count()` if there is none.
    std::size_t rowAt(qint64 position) const;

    /// The rows that reach into the stretch from `from` to before `to`: the first one and the one
    /// after the last.
    std::pair<std::size_t, std::size_t> rowsBetween(qint64 from, qint64 to) const;

  private:
    /// How many rows from the first one on are not higher than `limit` together.
    std::size_t rowsWithin(qint64 limit) const;

    std::vector<int> heights_;
    /// At n - 1, the height of as many rows, ending with row n - 1, as the lowest set bit of n
    /// says.
    std::vector<qint64> sums_;
    qint64 total_ = 0;
};

} // namespace kestrel
