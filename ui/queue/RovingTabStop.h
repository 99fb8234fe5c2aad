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
/// between a row and its remove button. Tab never reaches the list itself: assistive technology
/// would announce it before the row.
class RovingTabStop final : public QObject {
  public:
    /// Requires: `list` outlives this object.
    explicit RovingTabStop(JobScrollArea& list);

    /// Handles the keys and the tab order of a new row of the list.
    void adopt(JobRow& row);

    /// Returns the row that has the focus, itself or in its button; null if there is none.
    JobRow* focusedRow() const;

    /// Returns the index of the current row, which must stay a widget; none before the first.
    std::optional<std::size_t> pinnedRow() const;

    /// Makes one row the tab stop: the current one, or JobScrollArea::firstUncutRow(). None while
    /// the focus is in the list, so that Shift+Tab on a remove button leaves the list, too.
    void updateTabStop();

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

    /// Handles the keys of the remove buttons before they do, and scrolls to a row that Tab enters.
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    struct CurrentRow {
        UUID id;
        std::size_t index;
    };

    void setCurrent(std::size_t index);
    bool isFocusInside() const;
    void revealCurrent();
    void moveTo(std::size_t index, Qt::FocusReason reason);
    /// Returns the row that a key leads to, or none for a key that does not move between rows.
    std::optional<std::size_t> targetOf(int key, std::size_t from) const;
    /// Handles a key inside a row; returns whether it was handled.
    bool handleKeyInRow(JobRow& row, int key);

    JobScrollArea& list_;
    std::optional<CurrentRow> current_;
};

} // namespace kestrel
