#pragma once

#include "ConverterViewModel.h"
#include "JobRowHeights.h"

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
    explicit JobScrollArea(std::shared_ptr<ConverterViewModel> model, QWidget* parent = nullptr);
    JobScrollArea(const JobScrollArea&) = delete;
    JobScrollArea& operator=(const JobScrollArea&) = delete;
    ~JobScrollArea() override;

    /// Shows the model as it is now. What is in sight stays where it is, though rows above it
    /// change.
    void refresh();

    /// The rows that are widgets, in the order of the queue.
    std::vector<JobRow*> rows() const;

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

    std::optional<std::size_t> indexOf(const UUID& id) const;

    /// Shows the model as it is now; what was in sight lies `dy` pixels further down afterwards.
    void refreshMoved(int dy);
    std::vector<Sighting> sightings(int dy) const;
    void updateMetrics();
    void updateScrollRange();
    void scrollTo(qint64 value);
    void scrollBack(const std::vector<Sighting>& sightings);
    Range sight() const;
    bool measure(const Range& range);
    Range measuredSight();
    void placeRows();
    std::vector<std::size_t> wantedRows();
    void place(JobRow* row, std::size_t index);
    void retire(JobRow* row);
    JobRow* spareRow();
    QRect rowSpan() const;
    void updateSeparators();

    bool hasFocusInside() const;
    JobRow* focusedRow() const;
    JobRow* shownRow(std::size_t index) const;
    void updateFocusPolicy();
    void noteCurrent();
    void findCurrent();
    void moveFocusFrom(JobRow* lost);
    void enter(Qt::FocusReason reason);
    void moveTo(std::size_t index, Qt::FocusReason reason);
    void reveal(std::size_t index);
    bool handleKey(const QKeyEvent& event);
    std::optional<std::size_t> destination(int key, std::size_t from) const;
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
