#pragma once

#include "ConversionJob.h"
#include "UUID.h"

#include <QRect>

#include <cstddef>
#include <functional>
#include <optional>
#include <unordered_map>
#include <utility>
#include <vector>

class QWidget;

namespace kestrel {

class JobRow;

/// The widgets of the rows of a list. A widget whose row has left the viewport is hidden, and
/// recycled for another one.
class RecycledRows {
  public:
    /// A row, and where it has to be in the viewport.
    struct Place {
        std::size_t index = 0;
        QRect geometry;
    };

    struct RowWidget {
        JobRow* row = nullptr;
        std::size_t index = 0;
    };

    struct Outcome {
        /// How far the pixels of the viewport were scrolled down; 0 if they were not.
        int dy = 0;
        /// The row with the keyboard focus, if its job has no place any more; to be recycled once
        /// the focus has left it. Else null.
        JobRow* orphan = nullptr;
    };

    /// `make` returns a new row, a child of the viewport. Requires: `viewport` outlives this
    /// object.
    RecycledRows(QWidget& viewport, std::function<JobRow*()> make)
        : viewport_(viewport), make_(std::move(make)) {}

    /// The rows that have a widget, in the order of the queue.
    const std::vector<RowWidget>& placed() const noexcept { return placed_; }

    /// Returns the widget of a row, or null if it has none.
    JobRow* row(std::size_t index) const;

    /// Returns the index of a row, or none while it is not shown.
    std::optional<std::size_t> indexOf(const JobRow& row) const;

    /// Gives these rows a widget at their places, and no others. Scrolls the pixels of the rows
    /// that stay visible. `focused` is the row with the keyboard focus, or null.
    Outcome place(const std::vector<ConversionJob>& jobs, const std::vector<Place>& places,
                  JobRow* focused);

    /// Hides a row that has no place, for later use.
    void recycle(JobRow* row);

  private:
    using RowsByJob = std::unordered_map<UUID, JobRow*>;

    /// How far the rows that stay visible have to move, down in pixels; 0 if nothing is to be
    /// scrolled.
    int pendingScroll(const std::vector<ConversionJob>& jobs,
                      const std::vector<Place>& places) const;
    /// Places the rows that have a widget, and takes these from `unused`. Returns the other places.
    std::vector<Place> placeKept(const std::vector<ConversionJob>& jobs,
                                 const std::vector<Place>& places, RowsByJob& unused);
    /// Places rows where a scroll uncovers them.
    void placeUncovered(const std::vector<ConversionJob>& jobs, const std::vector<Place>& places);
    void place(JobRow* row, const ConversionJob& job, const Place& place, std::size_t count);
    JobRow* takeSpare();

    QWidget& viewport_;
    std::function<JobRow*()> make_;
    std::vector<RowWidget> placed_;
    std::vector<JobRow*> spare_;
};

} // namespace kestrel
