#include "JobScrollArea.h"

#include "ApplicationFont.h"
#include "Button.h"
#include "ControlStyle.h"
#include "ConversionJob.h"
#include "JobRow.h"
#include "ThemeColor.h"

#include <QApplication>
#include <QPaintEvent>
#include <QPainter>
#include <QScopedValueRollback>
#include <QScrollBar>

#include <algorithm>
#include <limits>
#include <unordered_map>

namespace kestrel {
namespace {

constexpr double separatorStrength = 0.5;

} // namespace

JobScrollArea::JobScrollArea(std::shared_ptr<ConverterViewModel> model, QWidget* parent)
    : QAbstractScrollArea(parent), model_(std::move(model)) {
    setAccessibleName(tr("Conversion Queue"));
    viewport()->setAccessibleName(accessibleName());
    setFrameShape(QFrame::NoFrame);
    viewport()->setAutoFillBackground(false);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    // A bar that came and went would change the width, and every height with it.
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    verticalScrollBar()->setStyle(ControlStyle::shared());
    // Where its style paints nothing, the window shows.
    verticalScrollBar()->setAttribute(Qt::WA_OpaquePaintEvent, false);
    setFocusPolicy(Qt::StrongFocus);
    connect(
        ApplicationFont::shared(), &ApplicationFont::changed, this,
        [this] {
            isFontStale_ = true;
            refresh();
        },
        Qt::QueuedConnection);
    connect(model_.get(), &ConverterViewModel::willChange, this, [this] { isStale_ = true; });
    connect(qApp, &QApplication::focusChanged, this, [this] {
        updateFocusPolicy();
        noteCurrent();
    });
}

JobScrollArea::~JobScrollArea() {
    // A row that goes away with the list changes the focus once more.
    qApp->disconnect(this);
}

void JobScrollArea::refresh() {
    refreshMoved(0);
}

void JobScrollArea::refreshMoved(int dy) {
    if (isPlacing_) {
        return;
    }
    const QScopedValueRollback<bool> placing(isPlacing_, true);
    isStale_ = false;
    const std::vector<Sighting> before = sightings(dy);
    noteCurrent();
    updateMetrics();
    heights_.update(model_->jobs());
    findCurrent();
    updateScrollRange();
    scrollBack(before);
    placeRows();
    if (hasFocus()) {
        enter(Qt::OtherFocusReason);
    }
}

std::vector<JobRow*> JobScrollArea::rows() const {
    std::vector<JobRow*> rows;
    rows.reserve(shown_.size());
    for (const ShownRow& shown : shown_) {
        rows.push_back(shown.row);
    }
    return rows;
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
    const QScopedValueRollback<bool> placing(isPlacing_, true);
    placeRows();
}

std::optional<std::size_t> JobScrollArea::indexOf(const UUID& id, std::size_t before) const {
    const std::vector<ConversionJob>& jobs = model_->jobs();
    if (before < jobs.size() && jobs[before].id() == id) {
        return before;
    }
    const auto found = std::find_if(jobs.begin(), jobs.end(),
                                    [&id](const ConversionJob& job) { return job.id() == id; });
    if (found == jobs.end()) {
        return std::nullopt;
    }
    return static_cast<std::size_t>(found - jobs.begin());
}

std::vector<JobScrollArea::Sighting> JobScrollArea::sightings(int dy) const {
    std::vector<Sighting> sightings;
    for (const auto& [row, index] : shown_) {
        const QRect geometry = row->geometry();
        const int bottom = geometry.top() + geometry.height();
        if (bottom > 0 && geometry.top() < viewport()->height()) {
            sightings.push_back({row->job().id(), index, geometry.top() + dy, bottom + dy});
        }
    }
    return sightings;
}

void JobScrollArea::updateMetrics() {
    if (model_->jobs().empty()) {
        // Takes time, which the program's start would have to wait for.
        return;
    }
    const int width = rowSpan().width();
    if (isFontStale_ || !heights_.metrics() || heights_.metrics()->width != width) {
        isFontStale_ = false;
        heights_.setMetrics(JobRow::measure(model_, viewport(), width));
        verticalScrollBar()->setSingleStep(std::max(1, heights_.metrics()->plainHeight / 3));
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

void JobScrollArea::scrollBack(const std::vector<Sighting>& sightings) {
    const RowOffsets& offsets = heights_.offsets();
    std::optional<int> gap;
    for (const Sighting& sighting : sightings) {
        const std::optional<std::size_t> index = indexOf(sighting.id, sighting.index);
        if (!index) {
            // The rows below close the gap of one that was there as a whole.
            gap = gap || sighting.top < 0 ? gap : sighting.top;
            continue;
        }
        // Assumed, its height would change once more, and where the row lies with it.
        if (heights_.measure(*index, model_->jobs()[*index])) {
            updateScrollRange();
        }
        // Of a row that reaches out of sight, the end that is in sight stays.
        const bool isCut = sighting.top < 0;
        const qint64 edge = offsets.top(*index) + (isCut ? offsets.height(*index) : 0) + endMargin;
        scrollTo(edge - (isCut ? sighting.bottom : gap.value_or(sighting.top)));
        return;
    }
}

JobScrollArea::Range JobScrollArea::sight() const {
    const qint64 top = qint64{verticalScrollBar()->value()} - endMargin;
    return heights_.offsets().rowsBetween(top, top + viewport()->height());
}

bool JobScrollArea::measure(const Range& range) {
    bool isChange = false;
    for (std::size_t index = range.first; index < range.second; ++index) {
        isChange = heights_.measure(index, model_->jobs()[index]) || isChange;
    }
    return isChange;
}

JobScrollArea::Range JobScrollArea::measuredSight() {
    Range range = sight();
    // What was in sight before was measured then, and stays; what is new gives way.
    std::size_t anchor = range.first;
    for (std::size_t index = range.first; index < range.second; ++index) {
        if (heights_.isKnown(model_->jobs()[index])) {
            anchor = index;
            break;
        }
    }
    const RowOffsets& offsets = heights_.offsets();
    const qint64 y = offsets.top(anchor) - verticalScrollBar()->value();
    while (measure(range)) {
        updateScrollRange();
        scrollTo(offsets.top(anchor) - y);
        range = sight();
    }
    return range;
}

std::vector<std::size_t> JobScrollArea::wantedRows() {
    const auto [first, end] = measuredSight();
    std::vector<std::size_t> wanted;
    for (std::size_t index = first; index < end; ++index) {
        wanted.push_back(index);
    }
    if (current_ && hasFocusInside() && (current_->index < first || current_->index >= end)) {
        wanted.insert(current_->index < first ? wanted.begin() : wanted.end(), current_->index);
    }
    return wanted;
}

void JobScrollArea::placeRows() {
    const std::vector<ConversionJob>& jobs = model_->jobs();
    const std::vector<std::size_t> wanted = wantedRows();
    std::unordered_map<UUID, JobRow*> old;
    for (const ShownRow& shown : shown_) {
        old.emplace(shown.row->job().id(), shown.row);
    }
    shown_.clear();
    std::vector<std::size_t> missing;
    for (const std::size_t index : wanted) {
        const auto found = old.find(jobs[index].id());
        if (found == old.end()) {
            missing.push_back(index);
            continue;
        }
        place(found->second, index);
        old.erase(found);
    }
    JobRow* const focused = focusedRow();
    JobRow* lost = nullptr;
    for (const auto& [id, row] : old) {
        if (row == focused) {
            lost = row;
        } else {
            retire(row);
        }
    }
    for (const std::size_t index : missing) {
        place(spareRow(), index);
    }
    std::sort(shown_.begin(), shown_.end(),
              [](const ShownRow& a, const ShownRow& b) { return a.index < b.index; });
    if (lost != nullptr) {
        moveFocusFrom(lost);
    }
    for (const ShownRow& shown : shown_) {
        shown.row->removeButton()->refreshHover();
    }
    updateSeparators();
}

QRect JobScrollArea::rowSpan() const {
    const int barSide = sideMargin - (width() - viewport()->width());
    const QRect span = viewport()->rect().adjusted(sideMargin - JobRow::overhang, 0,
                                                   JobRow::overhang - barSide, 0);
    return QStyle::visualRect(layoutDirection(), viewport()->rect(), span);
}

void JobScrollArea::place(JobRow* row, std::size_t index) {
    row->setJob(model_->jobs()[index]);
    row->setPosition(index, model_->jobs().size());
    const RowOffsets& offsets = heights_.offsets();
    const qint64 y = offsets.top(index) + endMargin - verticalScrollBar()->value();
    // A row that is kept for its focus may lie further away than a window can reach.
    constexpr qint64 farAway = 1'000'000;
    const QRect span = rowSpan();
    row->setGeometry(span.left(), static_cast<int>(std::clamp(y, -farAway, farAway)), span.width(),
                     offsets.height(index));
    row->show();
    shown_.push_back({row, index});
}

void JobScrollArea::retire(JobRow* row) {
    row->hide();
    spare_.push_back(row);
}

JobRow* JobScrollArea::spareRow() {
    if (!spare_.empty()) {
        JobRow* row = spare_.back();
        spare_.pop_back();
        return row;
    }
    auto* row = new JobRow(model_, viewport());
    row->removeButton()->installEventFilter(this);
    // Whatever is next to the list for the keyboard is next to its rows.
    setTabOrder(this, row);
    setTabOrder(row, row->removeButton());
    return row;
}

void JobScrollArea::updateSeparators() {
    std::vector<QRect> separators;
    const QRect all = viewport()->rect();
    for (const auto& [row, index] : shown_) {
        const bool isLast = index + 1 == model_->jobs().size();
        const int bottom = row->geometry().bottom();
        if (isLast || bottom < 0 || bottom >= all.height()) {
            continue;
        }
        QRect line = QStyle::visualRect(layoutDirection(), all, row->geometry());
        line.adjust(JobRow::overhang + JobRow::textIndent, 0, -JobRow::overhang, 0);
        line.setTop(bottom);
        separators.push_back(QStyle::visualRect(layoutDirection(), all, line));
    }
    if (separators == separators_) {
        return;
    }
    for (const std::vector<QRect>& lines : {separators_, separators}) {
        for (const QRect& line : lines) {
            viewport()->update(line);
        }
    }
    separators_ = std::move(separators);
}

void JobScrollArea::paintEvent(QPaintEvent* event) {
    QColor color = separatorColor(palette());
    color.setAlphaF(static_cast<float>(color.alphaF() * separatorStrength));
    QPainter painter(viewport());
    for (const QRect& line : separators_) {
        if (event->rect().intersects(line)) {
            painter.fillRect(line, color);
        }
    }
}

} // namespace kestrel
