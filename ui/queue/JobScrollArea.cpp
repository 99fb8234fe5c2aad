#include "JobScrollArea.h"

#include "ApplicationFont.h"
#include "Button.h"
#include "ControlStyle.h"
#include "ConversionJob.h"
#include "JobRow.h"

#include <QApplication>
#include <QMetaObject>
#include <QPaintEvent>
#include <QPainter>
#include <QScopedValueRollback>
#include <QScrollBar>

#include <algorithm>
#include <limits>

namespace kestrel {

JobScrollArea::JobScrollArea(std::shared_ptr<ConverterViewModel> model, QWidget* parent)
    : QAbstractScrollArea(parent), model_(std::move(model)) {
    //: The list of the queued files.
    viewport()->setAccessibleName(tr("Files"));
    setFrameShape(QFrame::NoFrame);
    // The background of the window. An opaque viewport lets QWidget::scroll copy pixels.
    viewport()->setBackgroundRole(QPalette::NoRole);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    // A scroll bar that appears would change the width, and with it every height.
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    verticalScrollBar()->setStyle(ControlStyle::shared());
    // Its style leaves parts transparent; filled, it is repainted without the widgets below it.
    verticalScrollBar()->setAttribute(Qt::WA_OpaquePaintEvent, false);
    verticalScrollBar()->setAutoFillBackground(true);
    // Tab goes to a row.
    setFocusPolicy(Qt::ClickFocus);
    connect(
        ApplicationFont::shared(), &ApplicationFont::changed, this,
        [this] {
            isFontStale_ = true;
            refresh();
        },
        Qt::QueuedConnection);
    connect(model_.get(), &ConverterViewModel::willChange, this, [this] { isStale_ = true; });
    connect(model_.get(), &ConverterViewModel::stateChanged, this,
            [this](std::size_t index) { changes_.addChange(index); });
    connect(model_.get(), &ConverterViewModel::jobRemoved, this,
            [this](std::size_t index) { changes_.addRemoval(index); });
}

void JobScrollArea::refresh() {
    refreshMoved(0);
}

bool JobScrollArea::refreshIfStale() {
    if (isStale_) {
        refresh();
    }
    return !isStale_;
}

void JobScrollArea::refreshMoved(int dy) {
    if (isPlacing_) {
        return;
    }
    const QScopedValueRollback<bool> placing(isPlacing_, true);
    isStale_ = false;
    const std::vector<VisibleRow> before = visibleRows(dy);
    tabStop_.followFocus();
    updateMetrics();
    heights_.update(jobs(), changes_);
    tabStop_.followJob();
    updateScrollRange();
    restoreScroll(before);
    changes_ = {};
    placeRows();
    if (hasFocus()) {
        tabStop_.enter(Qt::OtherFocusReason);
    }
}

std::vector<JobRow*> JobScrollArea::rows() const {
    std::vector<JobRow*> rows;
    rows.reserve(rows_.placed().size());
    for (const RecycledRows::RowWidget& placed : rows_.placed()) {
        rows.push_back(placed.row);
    }
    return rows;
}

void JobScrollArea::focusInEvent(QFocusEvent* event) {
    QAbstractScrollArea::focusInEvent(event);
    // Queued: assistive technology would learn of the row's focus before that of the list.
    const auto enter = [this, reason = event->reason()] {
        if (hasFocus()) {
            tabStop_.enter(reason);
        }
    };
    QMetaObject::invokeMethod(this, enter, Qt::QueuedConnection);
}

void JobScrollArea::keyPressEvent(QKeyEvent* event) {
    if (hasFocus()) {
        // A key that came right behind the focus.
        tabStop_.enter(Qt::OtherFocusReason);
    }
    event->setAccepted(tabStop_.handleKey(*event));
}

void JobScrollArea::changeEvent(QEvent* event) {
    QAbstractScrollArea::changeEvent(event);
    if (event->type() == QEvent::LayoutDirectionChange) {
        refresh();
    }
}

void JobScrollArea::resizeEvent(QResizeEvent* event) {
    QAbstractScrollArea::resizeEvent(event);
    refresh();
}

void JobScrollArea::scrollContentsBy(int, int dy) {
    if (isPlacing_) {
        return;
    }
    if (isStale_) {
        refreshMoved(dy);
        return;
    }
    updateRows();
}

void JobScrollArea::updateRows() {
    const QScopedValueRollback<bool> placing(isPlacing_, true);
    placeRows();
}

void JobScrollArea::reveal(std::size_t index) {
    const QScopedValueRollback<bool> placing(isPlacing_, true);
    const RowOffsets& offsets = heights_.offsets();
    // Rows that become visible may turn out to be lower than estimated.
    for (int round = 0; round < 2; ++round) {
        const bool isFirst = index == 0;
        const bool isLast = index + 1 == offsets.count();
        const qint64 top = offsets.top(index) + (isFirst ? 0 : endMargin);
        const qint64 bottom =
            offsets.top(index) + offsets.height(index) + (isLast ? 2 : 1) * qint64{endMargin};
        const qint64 value = verticalScrollBar()->value();
        scrollTo(std::min(top, std::max(value, bottom - viewport()->height())));
        placeRows();
    }
}

std::size_t JobScrollArea::firstUncutRow() const {
    const Range range = visibleRange();
    const qint64 firstTop = heights_.offsets().top(range.first) + endMargin;
    const bool isCut = firstTop < verticalScrollBar()->value();
    const std::size_t first =
        isCut && range.first + 1 < range.second ? range.first + 1 : range.first;
    return std::min(first, jobs().size() - 1);
}

std::optional<std::size_t> JobScrollArea::indexOf(const UUID& id, std::size_t before) const {
    const std::size_t removals = std::min(before, changes_.removed().size());
    for (std::size_t index = before - removals; index <= before && index < jobs().size(); ++index) {
        if (jobs()[index].id() == id) {
            return index;
        }
    }
    return std::nullopt;
}

std::vector<JobScrollArea::VisibleRow> JobScrollArea::visibleRows(int dy) const {
    std::vector<VisibleRow> visible;
    for (const auto& [row, index] : rows_.placed()) {
        const QRect geometry = row->geometry();
        const int bottom = geometry.top() + geometry.height();
        if (bottom > 0 && geometry.top() < viewport()->height()) {
            visible.push_back({row->job().id(), index, geometry.top() + dy, bottom + dy});
        }
    }
    return visible;
}

void JobScrollArea::updateMetrics() {
    if (model_->jobs().empty()) {
        // Measuring takes time, which would delay the first frame.
        return;
    }
    const int width = rowSpan().width();
    if (isFontStale_ || !heights_.metrics() || heights_.metrics()->width != width) {
        isFontStale_ = false;
        heights_.setMetrics(JobRow::measure(model_, viewport(), width));
        verticalScrollBar()->setSingleStep(heights_.metrics()->plainHeight / 3);
    }
}

void JobScrollArea::updateScrollRange() {
    const int page = viewport()->height();
    const qint64 range = heights_.offsets().total() + qint64{2} * endMargin - page;
    verticalScrollBar()->setPageStep(page);
    verticalScrollBar()->setRange(
        0, static_cast<int>(std::clamp<qint64>(range, 0, std::numeric_limits<int>::max())));
}

void JobScrollArea::scrollTo(qint64 value) {
    QScrollBar* bar = verticalScrollBar();
    bar->setValue(static_cast<int>(std::clamp<qint64>(value, bar->minimum(), bar->maximum())));
}

void JobScrollArea::restoreScroll(const std::vector<VisibleRow>& before) {
    const RowOffsets& offsets = heights_.offsets();
    std::optional<int> gap;
    for (const VisibleRow& visible : before) {
        const std::optional<std::size_t> index = indexOf(visible.id, visible.index);
        if (!index) {
            // The rows below close the gap of a removed row that was wholly visible.
            gap = gap || visible.top < 0 ? gap : visible.top;
            continue;
        }
        // An estimated height would change when the row is placed, and move the row.
        if (heights_.measure(*index, jobs()[*index])) {
            updateScrollRange();
        }
        // Of a row that is cut off at the top, the bottom edge keeps its place.
        const bool isCut = visible.top < 0;
        const qint64 edge = offsets.top(*index) + (isCut ? offsets.height(*index) : 0) + endMargin;
        scrollTo(edge - (isCut ? visible.bottom : gap.value_or(visible.top)));
        return;
    }
}

JobScrollArea::Range JobScrollArea::visibleRange() const {
    const qint64 top = qint64{verticalScrollBar()->value()} - endMargin;
    return heights_.offsets().rowsBetween(top, top + viewport()->height());
}

bool JobScrollArea::measure(const Range& range) {
    bool isChange = false;
    for (std::size_t index = range.first; index < range.second; ++index) {
        isChange = heights_.measure(index, jobs()[index]) || isChange;
    }
    return isChange;
}

JobScrollArea::Range JobScrollArea::measuredVisibleRange() {
    Range range = visibleRange();
    // The first row that has been measured already keeps its place.
    std::size_t anchor = range.first;
    for (std::size_t index = range.first; index < range.second; ++index) {
        if (heights_.isKnown(jobs()[index])) {
            anchor = index;
            break;
        }
    }
    const RowOffsets& offsets = heights_.offsets();
    const qint64 y = offsets.top(anchor) - verticalScrollBar()->value();
    while (measure(range)) {
        updateScrollRange();
        scrollTo(offsets.top(anchor) - y);
        range = visibleRange();
    }
    return range;
}

std::vector<std::size_t> JobScrollArea::rowsToPlace() {
    const auto [first, end] = measuredVisibleRange();
    std::vector<std::size_t> rows;
    for (std::size_t index = first; index < end; ++index) {
        rows.push_back(index);
    }
    const std::optional<std::size_t> pinned = tabStop_.pinnedRow();
    if (pinned && (*pinned < first || *pinned >= end)) {
        rows.insert(*pinned < first ? rows.begin() : rows.end(), *pinned);
    }
    return rows;
}

void JobScrollArea::placeRows() {
    std::vector<RecycledRows::Place> places;
    for (const std::size_t index : rowsToPlace()) {
        places.push_back({index, geometryOf(index)});
    }
    const auto [dy, orphan] = rows_.place(jobs(), places, tabStop_.focusedRow());
    separators_.scroll(dy);
    if (orphan != nullptr) {
        tabStop_.moveFocusFrom(*orphan);
        rows_.recycle(orphan);
    }
    for (const RecycledRows::RowWidget& placed : rows_.placed()) {
        placed.row->removeButton()->refreshHover();
    }
    tabStop_.updateTabStop();
    updateSeparators();
}

int JobScrollArea::topOf(std::size_t index) const {
    const qint64 y = heights_.offsets().top(index) + endMargin - verticalScrollBar()->value();
    // The pinned row may lie further away than the coordinates of a widget reach.
    constexpr qint64 farAway = 1'000'000;
    return static_cast<int>(std::clamp(y, -farAway, farAway));
}

QRect JobScrollArea::rowSpan() const {
    const int barSide = sideMargin - (width() - viewport()->width());
    const QRect span = viewport()->rect().adjusted(sideMargin - JobRow::overhang, 0,
                                                   JobRow::overhang - barSide, 0);
    return QStyle::visualRect(layoutDirection(), viewport()->rect(), span);
}

QRect JobScrollArea::geometryOf(std::size_t index) const {
    const QRect span = rowSpan();
    return {span.left(), topOf(index), span.width(), heights_.offsets().height(index)};
}

JobRow* JobScrollArea::makeRow() {
    auto* row = new JobRow(model_, viewport());
    tabStop_.adopt(*row);
    return row;
}

void JobScrollArea::updateSeparators() {
    std::vector<QRect> separators;
    const QRect all = viewport()->rect();
    for (const auto& [row, index] : rows_.placed()) {
        const bool isLast = index + 1 == jobs().size();
        const int bottom = row->geometry().bottom();
        if (isLast || bottom < 0 || bottom >= all.height()) {
            continue;
        }
        QRect line = QStyle::visualRect(layoutDirection(), all, row->geometry());
        line.adjust(JobRow::overhang + JobRow::textIndent, 0, -JobRow::overhang, 0);
        line.setTop(bottom);
        separators.push_back(QStyle::visualRect(layoutDirection(), all, line));
    }
    separators_.set(std::move(separators));
}

void JobScrollArea::paintEvent(QPaintEvent* event) {
    QPainter painter(viewport());
    separators_.paint(painter, event->rect());
}

} // namespace kestrel
