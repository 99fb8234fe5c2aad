"""Drag and drop (XDND) from another program."""

import itertools
import os
import subprocess

from driver import input, tree
from driver.waiting import TIMEOUT, Unmet, expect_equal, wait_for

# A point of the drag source's window, on the screen.
DRAG_START = (30, 30)
ANSWERS = ("takes", "declines")
# Polls without an answer before the pointer is nudged.
POLLS_PER_NUDGE = 25


def drop_files(session, node, *paths):
    """Drags files from another program onto the middle of a node, and drops them there."""
    source = DragSource(session, "files", *paths)
    source.drop_onto(tree.middle(node))
    source.close()


class DragSource:
    """The drag source program, with "files" (paths, str or bytes), "uris" or "text" as its kind. `kill` ends it."""

    def __init__(self, session, kind, *items):
        self.process = subprocess.Popen([session.options.drag_source, f"--{kind}", *items],
                                        stdin=subprocess.PIPE, stdout=subprocess.PIPE)
        os.set_blocking(self.process.stdout.fileno(), False)
        self._unread = []
        self._partial_line = b""
        self._position = DRAG_START
        session.helpers.append(self)
        expect_equal("drag source", self._next_line(), "ready")

    def _read(self):
        """Reads stdout without blocking; returns the lines not yet consumed."""
        try:
            data = os.read(self.process.stdout.fileno(), 65536)
        except BlockingIOError:
            return self._unread
        if not data:
            raise Unmet("the drag source has ended")
        *lines, self._partial_line = (self._partial_line + data).split(b"\n")
        self._unread += [line.decode() for line in lines]
        return self._unread

    def _next_line(self, seconds=TIMEOUT):
        wait_for("line from the drag source", self._read, seconds)
        return self._unread.pop(0)

    def drag_to(self, *points):
        """Starts a drag and moves to the last point by way of the others; the button stays down."""
        self._read().clear()
        input.drag(DRAG_START, points[-1], points[:-1])
        self._position = points[-1]

    def move_to(self, *points):
        """Continues the drag by way of the points."""
        self._read().clear()
        for point in points:
            input.move_to(*point)
        self._position = points[-1]

    def await_answer(self, expected):
        """Waits until the window under the pointer answers `expected`: "takes" or "declines"."""
        self._await_line(expected)
        # QDrag starts at the current pointer position and then handles the queued motion events. Only the
        # answer to a later motion is the final one.
        self._read().clear()
        self._nudge()
        self._await_line(expected)

    def _nudge(self):
        x, y = self._position
        input.move_to(x + 1, y)
        input.move_to(x, y)

    def _await_line(self, expected):
        tries = itertools.count(1)

        def is_received():
            if expected in self._read():
                return True
            # A source that is slow to start the drag needs further motion, which a hand always makes.
            if next(tries) % POLLS_PER_NUDGE == 0:
                self._nudge()
            return False

        wait_for(f'answer "{expected}"', is_received)

    def drop(self, seconds=TIMEOUT):
        """Releases the button; returns "copied", "moved" or "refused"."""
        input.release()
        while True:
            line = self._next_line(seconds)
            if line not in ANSWERS:
                return line

    def drop_onto(self, *points):
        """Drags to the last point by way of the others, and drops once the window there accepts."""
        self.drag_to(*points)
        self.await_answer("takes")
        expect_equal("answer to the drop", self.drop(), "copied")

    def close(self):
        self.process.stdin.close()
        self.process.wait(20)
        # The X server closes the window after the process has exited.
        wait_for("end of the drag source's window",
                 lambda: (input.focused_window() or [None])[0] not in (None, self.process.pid))

    def kill(self):
        if self.process.poll() is None:
            self.process.kill()
        self.process.wait()
