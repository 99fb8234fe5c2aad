#pragma once

#include "ConverterViewModel.h"
#include "JobRowMetrics.h"
#include "RowOffsets.h"

#include <QAbstractScrollArea>

#include <cstddef>
#include <memory>
#include <optional>
#include <unordered_map>
#include <vector>

namespace kestrel {

class JobRow;

/// The scrolling list of jobs. Only the rows in sight are widgets; they are reused as others come
/// into sight. A row that holds the keyboard focus stays a widget wherever it is.
class JobScrollArea : public QAbstractScrollArea {
    Q_OBJECT

  public:
    explicit JobScrollArea(std::shared_ptr<ConverterViewModel> model, QWidget* parent = nullptr);

    /// Shows the model as it is now. What is in sight stays where it is, though rows above it
    /// change.
    void refresh();

  protected:
    void resizeEvent(QResizeEvent* event) override;
    void scrollContentsBy(int dx, int dy) override;

  private:
    struct ShownRow {
        JobRow* row;
        std::size_t index;
    };

    /// A row in sight, and how far below the top edge it starts.
    struct Anchor {
        UUID id;
        int y;
    };

    struct MeasuredMessage {
        std::size_t hash;
        int lines;
    };

    std::vector<Anchor> anchors() const;
    void updateMetrics();
    void updateOffsets();
    int heightOf(const ConversionJob& job);
    int messageLines(const ConversionJob& job);
    void updateScrollBar(const std::vector<Anchor>& anchors);
    void placeRows();
    void place(JobRow* row, std::size_t index);
    void retire(const ShownRow& shown);
    void restoreFocus();
    JobRow* spareRow();
    bool hasFocusWithin(const JobRow* row) const;
    std::optional<std::size_t> indexOf(const UUID& id) const;

    std::shared_ptr<ConverterViewModel> model_;
    std::optional<JobRowMetrics> metrics_;
    RowOffsets offsets_;
    std::unordered_map<UUID, MeasuredMessage> messages_;
    std::vector<ShownRow> shown_;
    std::vector<JobRow*> spare_;
    /// Where the focus was when its row went away.
    std::optional<std::size_t> lostFocus_;
    bool isRefreshing_ = false;
};

} // namespace kestrel
