"""File managers for X11, from whose windows files are dragged."""

import pathlib
import sys
import urllib.parse

from driver import input, screen
from driver.waiting import wait_for

from parts import pointer, window_manager
from parts.helper import Helper
from parts.idleness import await_idle

COMMANDS = {"thunar": ["thunar"], "pcmanfm": ["pcmanfm"]}
DROP_TARGET = pathlib.Path(__file__).resolve().parent / "drop_target.py"
# A highlighted name is at least this wide, in pixels.
HIGHLIGHT = 16
# From the window's corner to what it lists, at least.
HEADER = 90


class Shown(Helper):
    """A program with one window, which is moved to a place once it is active."""

    def __init__(self, session, name, command, place, **environment):
        super().__init__(session, name, command, **environment)
        pointer.await_active(self.pid)
        self.window = pointer.active_window()
        window_manager.move(self.window, *place)

    def activate(self):
        input.xdotool("windowactivate", self.window)
        pointer.await_active(self.pid)


class FileManager(Shown):
    """Shows the folder."""

    def __init__(self, session, name, folder, place=(10, 40)):
        super().__init__(session, name, [*COMMANDS[name], str(folder)], place)

    def _pixels(self):
        return screen.pixels(pointer.rectangle(self.window))

    def select_all(self):
        """Selects all that it lists; returns a point of a selected file on the screen."""
        self.activate()
        x, y, width, height = pointer.rectangle(self.window)
        # Away from the list, so that nothing in it is highlighted for the pointer.
        input.move_to(x + width // 2, y + height - 5)
        before = self._steady_pixels()
        input.key("ctrl+a")
        # It learns of the selection later than it shows it.
        await_idle()
        found = wait_for("highlighted file", lambda: highlight(before, self._pixels()))
        return x + found[0], y + found[1]

    def _steady_pixels(self):
        seen = []

        def is_steady():
            await_idle()
            seen.append(self._pixels())
            return len(seen) > 1 and seen[-1] == seen[-2]

        wait_for("window that no longer changes", is_steady)
        return seen[-1]


def highlight(before, after):
    """A point in the first run of changed pixels of one colour that is long enough; None if there is none."""
    for y in range(HEADER, len(before)):
        run = 0
        for x in range(1, len(before[y])):
            is_same = after[y][x] == after[y][x - 1] and after[y][x] != before[y][x]
            run = run + 1 if is_same else 0
            if run == HIGHLIGHT:
                return x - HIGHLIGHT // 2, y
    return None


class DropTarget(Shown):
    """A window that records the files dropped on it."""

    def __init__(self, session, place):
        super().__init__(session, "drop-target", [sys.executable, str(DROP_TARGET)], place)

    def drops(self):
        """The paths of each drop so far, as bytes."""
        drops = [line.split() for line in self.log.read_text().splitlines() if line.startswith("file:")]
        return [[urllib.parse.unquote_to_bytes(uri.removeprefix("file://")) for uri in drop] for drop in drops]

    def middle(self):
        x, y, width, height = pointer.rectangle(self.window)
        return x + width // 2, y + height // 2


def drag(start, end):
    """Drags from point to point, as a hand does, which waits for the programs to catch up with it."""
    input.drag(start, end)
    for offset in (3, 0):
        await_idle()
        input.move_to(end[0] + offset, end[1])
    await_idle()
    input.release()
