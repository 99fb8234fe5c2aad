#include "JobScrollArea.h"

#include "DisplayText.h"
#include "ElidedLabel.h"
#include "JobRow.h"
#include "UserFont.h"

#include <QScopedValueRollback>
#include <QScrollBar>

#include <algorithm>
#include <limits>
#include <string_view>
#include <utility>

namespace kestrel {

JobScrollArea::JobScrollArea(std::shared_ptr<ConverterViewModel> model, QWidget* parent)
    : QAbstractScrollArea(parent), model_(std::move(model)) {
    setAccessibleName(tr("Conversion Queue"));
    setFrameShape(QFrame::NoFrame);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    // A bar that came and went would change the width, and every height with it.
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    connect(
        UserFont::shared(), &UserFont::changed, this,
        [this] {
            metrics_.reset();
            refresh();
        },
        Qt::QueuedConnection);
}

void JobScrollArea::refresh() {
    if (isRefreshing_) {
        return;
    }
    const QScopedValueRollback<bool> refreshing(isRefreshing_, true);
    const std::vector<Anchor> before = anchors();
    updateMetrics();
    updateOffsets();
    updateScrollBar(before);
    placeRows();
}

void JobScrollArea::resizeEvent(QResizeEvent* event) {
    QAbstractScrollArea::resizeEvent(event);
    refresh();
}

void JobScrollArea::scrollContentsBy(int, int) {
    if (isRefreshing_) {
        return;
    }
    if (offsets_.count() != model_->jobs().size()) {
        // The queue has changed and its refresh is still to come.
        refresh();
        return;
    }
    placeRows();
}

std::vector<JobScrollArea::Anchor> JobScrollArea::anchors() const {
    std::vector<Anchor> anchors;
    for (const ShownRow& shown : shown_) {
        const QRect geometry = shown.row->geometry();
        if (geometry.bottom() >= 0 && geometry.top() < viewport()->height()) {
            anchors.push_back({shown.row->job().id(), geometry.top()});
        }
    }
    std::sort(anchors.begin(), anchors.end(),
              [](const Anchor& a, const Anchor& b) { return a.y < b.y; });
    return anchors;
}

void JobScrollArea::updateMetrics() {
    const int width = viewport()->width();
    if (!metrics_ || metrics_->width != width) {
        metrics_ = JobRow::measure(model_, viewport(), width);
        messages_.clear();
        verticalScrollBar()->setSingleStep(std::max(1, metrics_->plainHeight / 3));
    }
}

void JobScrollArea::updateOffsets() {
    std::vector<int> heights;
    heights.reserve(model_->jobs().size());
    for (const ConversionJob& job : model_->jobs()) {
        heights.push_back(heightOf(job));
    }
    offsets_.assign(heights);
}

int JobScrollArea::heightOf(const ConversionJob& job) {
    switch (job.state.which()) {
    case JobState::Case::converting:
        return metrics_->convertingHeight;
    case JobState::Case::failed:
        return metrics_->failedHeight + (messageLines(job) - 1) * metrics_->messageLineHeight;
    default:
        return metrics_->plainHeight;
    }
}

int JobScrollArea::messageLines(const ConversionJob& job) {
    const std::string_view message = job.state.message();
    const std::size_t hash = std::hash<std::string_view>()(message.substr(0, 4096));
    const auto [known, isNew] = messages_.try_emplace(job.id(), MeasuredMessage{hash, 0});
    if (isNew || known->second.hash != hash) {
        const QStringList lines =
            ElidedLabel::shownLines(displayMessage(message), metrics_->messageFont,
                                    metrics_->messageWidth, JobRow::maxMessageLines);
        known->second = {hash, static_cast<int>(lines.size())};
    }
    return known->second.lines;
}

void JobScrollArea::updateScrollBar(const std::vector<Anchor>& anchors) {
    QScrollBar* bar = verticalScrollBar();
    const int page = viewport()->height();
    const qint64 range =
        std::clamp<qint64>(offsets_.total() - page, 0, std::numeric_limits<int>::max());
    bar->setPageStep(page);
    bar->setRange(0, static_cast<int>(range));
    for (const Anchor& anchor : anchors) {
        if (const std::optional<std::size_t> index = indexOf(anchor.id)) {
            bar->setValue(static_cast<int>(std::min(offsets_.top(*index) - anchor.y, range)));
            return;
        }
    }
}

void JobScrollArea::placeRows() {
    const std::vector<ConversionJob>& jobs = model_->jobs();
    const qint64 top = verticalScrollBar()->value();
    const auto [first, end] = offsets_.rowsBetween(top, top + viewport()->height());

    std::unordered_map<UUID, ShownRow> old;
    for (const ShownRow& shown : shown_) {
        old.emplace(shown.row->job().id(), shown);
    }
    shown_.clear();
    std::vector<std::size_t> missing;
    for (std::size_t index = first; index < end; ++index) {
        const auto found = old.find(jobs[index].id());
        if (found == old.end()) {
            missing.push_back(index);
            continue;
        }
        place(found->second.row, index);
        old.erase(found);
    }
    for (const auto& [id, shown] : old) {
        const std::optional<std::size_t> index =
            hasFocusWithin(shown.row) ? indexOf(id) : std::nullopt;
        if (index) {
            place(shown.row, *index);
        } else {
            retire(shown);
        }
    }
    for (const std::size_t index : missing) {
        place(spareRow(), index);
    }
    restoreFocus();
}

void JobScrollArea::place(JobRow* row, std::size_t index) {
    row->setJob(model_->jobs()[index]);
    const qint64 y = offsets_.top(index) - verticalScrollBar()->value();
    // A row that is kept for its focus may lie further away than a window can reach.
    constexpr qint64 farAway = 1'000'000;
    row->setGeometry(0, static_cast<int>(std::clamp(y, -farAway, farAway)), viewport()->width(),
                     offsets_.height(index));
    row->show();
    shown_.push_back({row, index});
}

void JobScrollArea::retire(const ShownRow& shown) {
    if (hasFocusWithin(shown.row)) {
        lostFocus_ = shown.index;
        setFocus(Qt::OtherFocusReason);
    }
    shown.row->hide();
    spare_.push_back(shown.row);
}

JobRow* JobScrollArea::spareRow() {
    if (spare_.empty()) {
        return new JobRow(model_, viewport());
    }
    JobRow* row = spare_.back();
    spare_.pop_back();
    return row;
}

void JobScrollArea::restoreFocus() {
    if (!lostFocus_ || model_->jobs().empty()) {
        lostFocus_.reset();
        return;
    }
    const std::size_t index = std::min(*lostFocus_, model_->jobs().size() - 1);
    lostFocus_.reset();
    for (const ShownRow& shown : shown_) {
        if (shown.index == index) {
            shown.row->focusRemoveButton(Qt::OtherFocusReason);
        }
    }
}

bool JobScrollArea::hasFocusWithin(const JobRow* row) const {
    const QWidget* focus = window()->focusWidget();
    return focus != nullptr && row->isAncestorOf(focus);
}

std::optional<std::size_t> JobScrollArea::indexOf(const UUID& id) const {
    const std::vector<ConversionJob>& jobs = model_->jobs();
    const auto found = std::find_if(jobs.begin(), jobs.end(),
                                    [&id](const ConversionJob& job) { return job.id() == id; });
    if (found == jobs.end()) {
        return std::nullopt;
    }
    return static_cast<std::size_t>(found - jobs.begin());
}

} // namespace kestrel
