#pragma once

#include <QtGlobal>

#include <cstddef>
#include <utility>
#include <vector>

namespace kestrel {

/// The vertical offsets of a list's rows, in pixels from the top of the first one.
///
/// A Fenwick tree over the heights: `assign` and `remove` are O(n), everything else at most
/// O(log n).
class RowOffsets {
  public:
    /// Replaces all rows. Requires: no height is negative.
    void assign(std::vector<int> heights);

    /// Requires: `height` is not negative.
    void setHeight(std::size_t row, int height);

    /// Adds a row at the end. Requires: `height` is not negative.
    void append(int height);

    void remove(std::size_t row);

    std::size_t count() const noexcept { return heights_.size(); }

    /// The height of all rows together.
    qint64 total() const noexcept { return total_; }

    /// `top(count())` is the end of the last row.
    qint64 top(std::size_t row) const;

    int height(std::size_t row) const { return heights_.at(row); }

    /// Returns the first row that ends below a position, or `count()`.
    std::size_t rowAt(qint64 position) const;

    /// Returns the half-open range of rows that intersect [`from`, `to`).
    std::pair<std::size_t, std::size_t> rowsBetween(qint64 from, qint64 to) const;

  private:
    /// Returns how many leading rows have a total height of at most `limit`.
    std::size_t rowsWithin(qint64 limit) const;

    std::vector<int> heights_;
    /// `sums_[n - 1]` is the total height of the `n & -n` rows that end with row n - 1.
    std::vector<qint64> sums_;
    qint64 total_ = 0;
};

} // namespace kestrel
