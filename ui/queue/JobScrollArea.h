#pragma once

#include "ConverterViewModel.h"
#include "JobRowHeights.h"
#include "UUID.h"

#include <QAbstractScrollArea>

#include <cstddef>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

class QKeyEvent;

namespace kestrel {

class JobRow;

/// The scrolling list of jobs. Only the rows in sight are widgets; they are reused as others come
/// into sight. A row that holds the keyboard focus stays a widget wherever it is.
///
/// For the keyboard the list is one stop: Tab comes to the current row and leaves the list from
/// there; other keys move between the rows, and from a row into its remove button.
class JobScrollArea : public QAbstractScrollArea {
    Q_OBJECT

  public:
    /// From the edges of the list to the contents of the rows, in pixels, the scroll bar lying in
    /// between. What is above and below the list keeps it too.
    static constexpr int sideMargin = 26;

    explicit JobScrollArea(std::shared_ptr<ConverterViewModel> model, QWidget* parent = nullptr);
    JobScrollArea(const JobScrollArea&) = delete;
    JobScrollArea& operator=(const JobScrollArea&) = delete;
    ~JobScrollArea() override;

    /// Shows the model as it is now. What is in sight stays where it is, though rows above it
    /// change.
    void refresh();

    /// The rows that are widgets, in the order of the queue.
    std::vector<JobRow*> rows() const;

    /// How high the rows are, as of the last refresh.
    const JobRowHeights& heights() const noexcept { return heights_; }

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void changeEvent(QEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void scrollContentsBy(int dx, int dy) override;

  private:
    struct ShownRow {
        JobRow* row;
        std::size_t index;
    };

    /// A row that was in sight, and where in the viewport it is to start and end.
    struct Sighting {
        UUID id;
        std::size_t index;
        int top;
        int bottom;
    };

    /// The row that the keyboard is at, or comes back to.
    struct CurrentRow {
        UUID id;
        std::size_t index;
    };

    /// Above the first and below the last row, in pixels.
    static constexpr int endMargin = 6;

    using Range = std::pair<std::size_t, std::size_t>;

    /// Looks first where the job was before.
    std::optional<std::size_t> indexOf(const UUID& id, std::size_t before) const;

    /// Shows the model as it is now; what was in sight lies `dy` pixels further down afterwards.
    void refreshMoved(int dy);
    std::vector<Sighting> sightings(int dy) const;
    /// Measures what rows are made of, if their width or the user's font has changed.
    void updateMetrics();
    void updateScrollRange();
    void scrollTo(qint64 value);
    /// Scrolls to where the topmost of these rows that is still queued lies as it did.
    void scrollBack(const std::vector<Sighting>& sightings);
    /// The rows that reach into the viewport, by the heights known so far.
    Range sight() const;
    /// Measures the messages of these rows; whether any height was another than assumed.
    bool measure(const Range& range);
    /// The rows in sight once no height among them is an assumption. May scroll.
    Range measuredSight();
    /// Makes and moves the widgets of the rows that are to have one.
    void placeRows();
    /// The rows in sight and the current one while it has the focus, in order.
    std::vector<std::size_t> wantedRows();
    void place(JobRow* row, std::size_t index);
    /// Puts a row aside, to be used again.
    void retire(JobRow* row);
    JobRow* spareRow();
    /// The left and the right edge of every row, in the viewport.
    QRect rowSpan() const;
    void updateSeparators();

    bool hasFocusInside() const;
    /// The row that has the focus itself or in its button; null if there is none.
    JobRow* focusedRow() const;
    /// The widget of a row; null if it has none.
    JobRow* shownRow(std::size_t index) const;
    void updateFocusPolicy();
    /// Makes the row with the focus the current one.
    void noteCurrent();
    /// Finds the current row in the queue as it is now, or the one that is in its place.
    void findCurrent();
    /// Hands the focus of a row whose job is gone to the current row, and puts the old one aside.
    void moveFocusFrom(JobRow* lost);
    /// Gives the focus to the current row, or to the first one in sight.
    void enter(Qt::FocusReason reason);
    /// Makes a row the current one and gives it the focus.
    void moveTo(std::size_t index, Qt::FocusReason reason);
    /// Scrolls no further than it takes to have all of a row in sight.
    void reveal(std::size_t index);
    bool handleKey(const QKeyEvent& event);
    /// Where a key leads to from a row; none for a key that leads nowhere.
    std::optional<std::size_t> rowReachedBy(int key, std::size_t from) const;
    /// Does what a key means inside a row; false if it means nothing there.
    bool actOn(JobRow& row, int key);

    std::shared_ptr<ConverterViewModel> model_;
    JobRowHeights heights_;
    std::vector<ShownRow> shown_;
    std::vector<JobRow*> spare_;
    std::vector<QRect> separators_;
    std::optional<CurrentRow> current_;
    /// Whether the model may be another one than at the last refresh.
    bool isStale_ = true;
    bool isFontStale_ = false;
    bool isPlacing_ = false;
};

} // namespace kestrel
