#include "RovingTabStop.h"

#include "Button.h"
#include "ConversionJob.h"
#include "JobRow.h"
#include "JobScrollArea.h"
#include "KeyboardFocus.h"

#include <QApplication>
#include <QFocusEvent>
#include <QKeyEvent>
#include <QMetaObject>

#include <algorithm>
#include <vector>

namespace kestrel {

RovingTabStop::RovingTabStop(JobScrollArea& list) : list_(list) {
    connect(qApp, &QApplication::focusChanged, this, [this] {
        followFocus();
        updateTabStop();
    });
}

void RovingTabStop::adopt(JobRow& row) {
    row.installEventFilter(this);
    row.removeButton()->installEventFilter(this);
    // The rows follow the list in the tab order, whatever is created after it.
    QWidget::setTabOrder(&list_, &row);
    QWidget::setTabOrder(&row, row.removeButton());
}

bool RovingTabStop::isFocusInside() const {
    const QWidget* focus = list_.window()->focusWidget();
    return focus != nullptr && (focus == &list_ || list_.isAncestorOf(focus));
}

JobRow* RovingTabStop::focusedRow() const {
    if (!isFocusInside()) {
        return nullptr;
    }
    QWidget* widget = list_.window()->focusWidget();
    while (widget != &list_) {
        if (auto* row = qobject_cast<JobRow*>(widget)) {
            return row;
        }
        widget = widget->parentWidget();
    }
    return nullptr;
}

std::optional<std::size_t> RovingTabStop::pinnedRow() const {
    return current_ ? std::optional(current_->index) : std::nullopt;
}

void RovingTabStop::updateTabStop() {
    const std::vector<JobRow*> rows = list_.rows();
    if (rows.empty()) {
        return;
    }
    const JobRow* stop = nullptr;
    if (!isFocusInside()) {
        stop = list_.row(current_ ? current_->index : list_.firstUncutRow());
    }
    for (JobRow* row : rows) {
        const bool isStop = stop != nullptr && row == stop;
        row->setFocusPolicy(isStop ? Qt::StrongFocus : Qt::ClickFocus);
    }
}

void RovingTabStop::setCurrent(std::size_t index) {
    current_ = CurrentRow{list_.jobs()[index].id(), index};
}

void RovingTabStop::followFocus() {
    if (const JobRow* focused = focusedRow()) {
        if (const std::optional<std::size_t> index = list_.indexOf(*focused)) {
            current_ = CurrentRow{focused->job().id(), *index};
        }
    }
}

void RovingTabStop::followJob() {
    if (!current_ || list_.jobs().empty()) {
        current_.reset();
        return;
    }
    if (const std::optional<std::size_t> index = list_.indexOf(current_->id, current_->index)) {
        current_->index = *index;
        return;
    }
    setCurrent(std::min(current_->index, list_.jobs().size() - 1));
}

void RovingTabStop::moveFocusFrom(const JobRow& orphan) {
    JobRow* row = current_ ? list_.row(current_->index) : nullptr;
    if (row == nullptr) {
        list_.setFocus(Qt::OtherFocusReason);
    } else if (KeyboardFocus::isShownOn(*orphan.removeButton()) && row->isRemovable()) {
        // The keyboard can remove one job after the other.
        row->removeButton()->setFocus(Qt::OtherFocusReason);
    } else {
        row->setFocus(Qt::OtherFocusReason);
    }
}

void RovingTabStop::enter(Qt::FocusReason reason) {
    if (!list_.refreshIfStale() || list_.jobs().empty()) {
        return;
    }
    moveTo(current_ ? current_->index : list_.firstUncutRow(), reason);
}

void RovingTabStop::moveTo(std::size_t index, Qt::FocusReason reason) {
    setCurrent(index);
    if (reason == Qt::MouseFocusReason) {
        // A press on the scroll bar or a margin does not scroll.
        list_.updateRows();
    } else {
        list_.reveal(index);
    }
    if (JobRow* row = list_.row(index)) {
        row->setFocus(reason);
    }
}

void RovingTabStop::revealCurrent() {
    if (list_.refreshIfStale() && current_ && isFocusInside()) {
        list_.reveal(current_->index);
    }
}

bool RovingTabStop::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::FocusIn) {
        const auto* focus = dynamic_cast<QFocusEvent*>(event);
        if (focus != nullptr &&
            (focus->reason() == Qt::TabFocusReason || focus->reason() == Qt::BacktabFocusReason)) {
            // After the focus event: a refresh may move the focus.
            QMetaObject::invokeMethod(this, &RovingTabStop::revealCurrent, Qt::QueuedConnection);
        }
    } else if (event->type() == QEvent::KeyPress && qobject_cast<Button*>(watched) != nullptr) {
        // A QAbstractButton would move the focus by arrow keys itself.
        if (const auto* key = dynamic_cast<QKeyEvent*>(event); key != nullptr && handleKey(*key)) {
            return true;
        }
    }
    return QObject::eventFilter(watched, event);
}

bool RovingTabStop::handleKey(const QKeyEvent& event) {
    const bool isTab = event.key() == Qt::Key_Tab || event.key() == Qt::Key_Backtab;
    if (isTab || (event.modifiers() & ~Qt::KeypadModifier) != Qt::NoModifier) {
        return false;
    }
    list_.refreshIfStale();
    JobRow* row = focusedRow();
    if (row == nullptr || !current_) {
        return false;
    }
    if (const std::optional<std::size_t> index = targetOf(event.key(), current_->index)) {
        moveTo(*index, Qt::OtherFocusReason);
        return true;
    }
    const bool isSideways = event.key() == Qt::Key_Left || event.key() == Qt::Key_Right;
    if (isSideways || !event.text().isEmpty()) {
        list_.reveal(current_->index);
    }
    return handleKeyInRow(*row, event.key());
}

std::optional<std::size_t> RovingTabStop::targetOf(int key, std::size_t from) const {
    const RowOffsets& offsets = list_.heights().offsets();
    const std::size_t last = offsets.count() - 1;
    const qint64 top = offsets.top(from);
    const int page = list_.viewport()->height();
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
        return offsets.rowAt(std::max<qint64>(top - page, 0));
    case Qt::Key_PageDown:
        return std::min(std::max(offsets.rowAt(top + page), from + 1), last);
    default:
        return std::nullopt;
    }
}

bool RovingTabStop::handleKeyInRow(JobRow& row, int key) {
    const bool isOnButton = row.removeButton()->hasFocus();
    const int forward = list_.isRightToLeft() ? Qt::Key_Left : Qt::Key_Right;
    const int back = list_.isRightToLeft() ? Qt::Key_Right : Qt::Key_Left;
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
