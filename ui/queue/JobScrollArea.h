#pragma once

#include "ConverterViewModel.h"
#include "JobRowHeights.h"
#include "QueueChanges.h"
#include "RecycledRows.h"
#include "RovingTabStop.h"
#include "RowSeparators.h"
#include "UUID.h"

#include <QAbstractScrollArea>

#include <cstddef>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

namespace kestrel {

class JobRow;

/// A virtualised list of jobs: only the visible rows are widgets, and they are recycled while the
/// list scrolls. The row that the keyboard focus was last on is pinned: it stays a widget outside
/// the viewport while its job is queued.
class JobScrollArea : public QAbstractScrollArea {
    Q_OBJECT

  public:
    /// From the edges of the list to the contents of its rows, in pixels; includes the scroll bar.
    /// The views above and below the list have the same margin.
    static constexpr int sideMargin = 26;

    explicit JobScrollArea(std::shared_ptr<ConverterViewModel> model, QWidget* parent = nullptr);

    /// Shows the model as it is now. Visible rows keep their place when rows above them change.
    void refresh();

    /// Refreshes if the model may have changed since the last refresh. Returns false when it cannot
    /// refresh now, because it is placing rows.
    bool refreshIfStale();

    const std::vector<ConversionJob>& jobs() const noexcept { return model_->jobs(); }

    /// Returns the index of a job that was at `before` when the list was refreshed last, or none
    /// when it is not queued any more. Jobs only move up, by one for each removed one.
    std::optional<std::size_t> indexOf(const UUID& id, std::size_t before) const;

    /// Returns the index of a row, or none while it is not shown.
    std::optional<std::size_t> indexOf(const JobRow& row) const { return rows_.indexOf(row); }

    /// The rows that are widgets, in the order of the queue.
    std::vector<JobRow*> rows() const;

    /// Returns the widget of a row, or null if it has none.
    JobRow* row(std::size_t index) const { return rows_.row(index); }

    /// The heights of all rows, as of the last refresh.
    const JobRowHeights& heights() const noexcept { return heights_; }

    /// Returns the first row whose top edge is visible, or the only visible row. Requires: a queue
    /// that is not empty.
    std::size_t firstUncutRow() const;

    /// Scrolls by the minimum that makes the whole row visible.
    void reveal(std::size_t index);

    /// Gives the visible rows and the pinned one their widgets and positions.
    void updateRows();

  protected:
    void changeEvent(QEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void scrollContentsBy(int dx, int dy) override;

  private:
    /// A row that was visible before a change, and its edges in the viewport, in pixels.
    struct VisibleRow {
        UUID id;
        std::size_t index;
        int top;
        int bottom;
    };

    /// The first row, and the one after the last.
    using Range = std::pair<std::size_t, std::size_t>;

    /// Above the first and below the last row, in pixels.
    static constexpr int endMargin = 6;

    /// Refreshes; visible rows lie `dy` pixels further down afterwards.
    void refreshMoved(int dy);
    std::vector<VisibleRow> visibleRows(int dy) const;
    /// Measures the parts of a row, if the width of the rows or the application font has changed.
    void updateMetrics();
    void updateScrollRange();
    void scrollTo(qint64 value);
    /// Scrolls so that the topmost of these rows that is still queued keeps its place.
    void restoreScroll(const std::vector<VisibleRow>& before);
    /// The rows that reach into the viewport, by the heights known so far.
    Range visibleRange() const;
    /// Measures the messages of these rows; returns whether any height has changed.
    bool measure(const Range& range);
    /// The visible rows once all their heights have been measured. May scroll.
    Range measuredVisibleRange();
    void placeRows();
    /// The rows that need a widget, in order.
    std::vector<std::size_t> rowsToPlace();
    /// Where a row has to be in the viewport.
    QRect geometryOf(std::size_t index) const;
    /// The top edge of a row in the viewport.
    int topOf(std::size_t index) const;
    JobRow* makeRow();
    /// The left and the right edge of every row, in the viewport.
    QRect rowSpan() const;
    void updateSeparators();

    std::shared_ptr<ConverterViewModel> model_;
    JobRowHeights heights_;
    RecycledRows rows_{*viewport(), [this] { return makeRow(); }};
    RowSeparators separators_{*viewport()};
    /// Since the last refresh; during one, those that it shows.
    QueueChanges changes_;
    /// Whether the model may have changed since the last refresh.
    bool isStale_ = true;
    bool isFontStale_ = false;
    /// Guards against re-entry while the scroll bar moves.
    bool isPlacing_ = false;
    RovingTabStop tabStop_{*this};
};

} // namespace kestrel
