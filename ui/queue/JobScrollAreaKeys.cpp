// How the keyboard moves through the list.

#include "Button.h"
#include "ConversionJob.h"
#include "JobRow.h"
#include "JobScrollArea.h"
#include "KeyboardFocus.h"

#include <QKeyEvent>
#include <QScopedValueRollback>
#include <QScrollBar>

#include <algorithm>

namespace kestrel {

bool JobScrollArea::hasFocusInside() const {
    const QWidget* focus = window()->focusWidget();
    return focus != nullptr && (focus == this || isAncestorOf(focus));
}

JobRow* JobScrollArea::focusedRow() const {
    if (!hasFocusInside()) {
        return nullptr;
    }
    QWidget* widget = window()->focusWidget();
    while (widget != this) {
        if (auto* row = qobject_cast<JobRow*>(widget)) {
            return row;
        }
        widget = widget->parentWidget();
    }
    return nullptr;
}

JobRow* JobScrollArea::shownRow(std::size_t index) const {
    const auto found = std::find_if(shown_.begin(), shown_.end(), [index](const ShownRow& shown) {
        return shown.index == index;
    });
    return found != shown_.end() ? found->row : nullptr;
}

void JobScrollArea::updateFocusPolicy() {
    // Shift+Tab leaves the rows for what is before the list, not for the list.
    const Qt::FocusPolicy policy = hasFocusInside() ? Qt::ClickFocus : Qt::StrongFocus;
    if (focusPolicy() != policy) {
        setFocusPolicy(policy);
    }
}

void JobScrollArea::noteCurrent() {
    const JobRow* focused = focusedRow();
    for (const auto& [row, index] : shown_) {
        if (row == focused) {
            current_ = CurrentRow{row->job().id(), index};
        }
    }
}

void JobScrollArea::findCurrent() {
    const std::vector<ConversionJob>& jobs = model_->jobs();
    if (!current_ || jobs.empty()) {
        current_.reset();
        return;
    }
    if (const std::optional<std::size_t> index = indexOf(current_->id, current_->index)) {
        current_->index = *index;
        return;
    }
    const std::size_t index = std::min(current_->index, jobs.size() - 1);
    current_ = CurrentRow{jobs[index].id(), index};
}

void JobScrollArea::moveFocusFrom(JobRow* lost) {
    JobRow* row = current_ ? shownRow(current_->index) : nullptr;
    if (row == nullptr) {
        setFocus(Qt::OtherFocusReason);
    } else if (KeyboardFocus::isShownOn(*lost->removeButton()) && row->isRemovable()) {
        // Who removes one job after the other stays at the buttons.
        row->removeButton()->setFocus(Qt::OtherFocusReason);
    } else {
        row->setFocus(Qt::OtherFocusReason);
    }
    retire(lost);
}

void JobScrollArea::focusInEvent(QFocusEvent* event) {
    QAbstractScrollArea::focusInEvent(event);
    enter(event->reason());
}

void JobScrollArea::enter(Qt::FocusReason reason) {
    if (isStale_) {
        refresh();
    }
    if (isStale_ || model_->jobs().empty()) {
        return;
    }
    if (!current_) {
        const Range range = sight();
        const qint64 firstTop = heights_.offsets().top(range.first) + endMargin;
        const bool isCut = firstTop < verticalScrollBar()->value();
        const std::size_t first =
            isCut && range.first + 1 < range.second ? range.first + 1 : range.first;
        const std::size_t index = std::min(first, model_->jobs().size() - 1);
        current_ = CurrentRow{model_->jobs()[index].id(), index};
    }
    moveTo(current_->index, reason);
}

void JobScrollArea::moveTo(std::size_t index, Qt::FocusReason reason) {
    current_ = CurrentRow{model_->jobs()[index].id(), index};
    if (reason == Qt::MouseFocusReason) {
        // Who presses the scroll bar or a margin wants to see what is there.
        const QScopedValueRollback<bool> placing(isPlacing_, true);
        placeRows();
    } else {
        reveal(index);
    }
    if (JobRow* row = shownRow(index)) {
        row->setFocus(reason);
    }
}

void JobScrollArea::reveal(std::size_t index) {
    const QScopedValueRollback<bool> placing(isPlacing_, true);
    const RowOffsets& offsets = heights_.offsets();
    // Rows that come into sight may turn out to be less high than assumed.
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

bool JobScrollArea::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::KeyPress) {
        // A button has its own mind about arrow keys.
        if (const auto* key = dynamic_cast<QKeyEvent*>(event); key != nullptr && handleKey(*key)) {
            return true;
        }
    }
    return QAbstractScrollArea::eventFilter(watched, event);
}

void JobScrollArea::keyPressEvent(QKeyEvent* event) {
    event->setAccepted(handleKey(*event));
}

bool JobScrollArea::handleKey(const QKeyEvent& event) {
    const bool isTab = event.key() == Qt::Key_Tab || event.key() == Qt::Key_Backtab;
    if (isTab || (event.modifiers() & ~Qt::KeypadModifier) != Qt::NoModifier) {
        return false;
    }
    if (isStale_) {
        refresh();
    }
    JobRow* row = focusedRow();
    if (row == nullptr || !current_) {
        return false;
    }
    if (const std::optional<std::size_t> index = rowReachedBy(event.key(), current_->index)) {
        moveTo(*index, Qt::OtherFocusReason);
        return true;
    }
    const bool isSideways = event.key() == Qt::Key_Left || event.key() == Qt::Key_Right;
    if (isSideways || !event.text().isEmpty()) {
        reveal(current_->index);
    }
    return actOn(*row, event.key());
}

std::optional<std::size_t> JobScrollArea::rowReachedBy(int key, std::size_t from) const {
    const RowOffsets& offsets = heights_.offsets();
    const std::size_t last = offsets.count() - 1;
    const qint64 top = offsets.top(from);
    const int page = viewport()->height();
    switch (key) {
    case Qt::Key_Up:
        return from > 0 ? from - 1 : 0;
    case Qt::Key_Down:
        return std::min(from + 1, last);
    case Qt::Key_Home:
        return 0;
    case Qt::Key_End:
        return last;
    case Qt::Key_PageUp:
        return std::min(offsets.rowAt(std::max<qint64>(top - page, 0)), from > 0 ? from - 1 : 0);
    case Qt::Key_PageDown:
        return std::min(std::max(offsets.rowAt(top + page), from + 1), last);
    default:
        return std::nullopt;
    }
}

bool JobScrollArea::actOn(JobRow& row, int key) {
    const bool isOnButton = row.removeButton()->hasFocus();
    const int forward = isRightToLeft() ? Qt::Key_Left : Qt::Key_Right;
    const int back = isRightToLeft() ? Qt::Key_Right : Qt::Key_Left;
    if (key == Qt::Key_Delete) {
        if (row.isRemovable()) {
            row.removeButton()->click();
        }
        return true;
    }
    if (key == forward) {
        if (row.isRemovable()) {
            row.removeButton()->setFocus(Qt::OtherFocusReason);
        }
        return true;
    }
    if (key == back || (key == Qt::Key_Escape && isOnButton)) {
        row.setFocus(Qt::OtherFocusReason);
        return true;
    }
    return false;
}

} // namespace kestrel
