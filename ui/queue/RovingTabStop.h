#pragma once

#include "UUID.h"

#include <QObject>

#include <cstddef>
#include <optional>

class QKeyEvent;

namespace kestrel {

class JobRow;
class JobScrollArea;

/// The keyboard focus in a JobScrollArea: a roving tab stop. Tab enters the list at the current row
/// and leaves it from there; the arrow, page, Home and End keys move between rows, Left and Right
/// between a row and its remove button.
class RovingTabStop final : public QObject {
  public:
    /// Requires: `list` outlives this object.
    explicit RovingTabStop(JobScrollArea& list);

    /// Handles the keys and the tab order of a new row of the list.
    void adopt(JobRow& row);

    /// Returns the row that has the focus, itself or in its button; null if there is none.
    JobRow* focusedRow() const;

    /// Returns the index of the row that must stay a widget, because the focus is in the list; none
    /// if it is elsewhere.
    std::optional<std::size_t> pinnedRow() const;

    /// Makes the row with the focus the current one.
    void followFocus();

    /// Finds the current row in the queue as it is now. If its job was removed, the row at its
    /// index, or the last one, becomes the current one.
    void followJob();

    /// Moves the focus from a row whose job was removed to the current row.
    void moveFocusFrom(const JobRow& orphan);

    /// Gives the focus to the current row; without one, to JobScrollArea::firstUncutRow().
    void enter(Qt::FocusReason reason);

    /// Returns whether the key was handled.
    bool handleKey(const QKeyEvent& event);

    /// Handles the keys of the remove buttons before they do.
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    struct CurrentRow {
        UUID id;
        std::size_t index;
    };

    void setCurrent(std::size_t index);
    bool isFocusInside() const;
    /// Shift+Tab leaves the rows for what is before the list, not for the list itself.
    void updateFocusPolicy();
    void moveTo(std::size_t index, Qt::FocusReason reason);
    /// Returns the row that a key leads to, or none for a key that does not move between rows.
    std::optional<std::size_t> targetOf(int key, std::size_t from) const;
    /// Handles a key inside a row; returns whether it was handled.
    bool handleKeyInRow(JobRow& row, int key);

    JobScrollArea& list_;
    std::optional<CurrentRow> current_;
};

} // namespace kestrel
