"""Drags from another program."""

import os
import subprocess

from driver import hands
from driver.waiting import SECONDS, Unmet, expect_equal, wait_for

# Where the source's window is put: beside nothing that a scenario drops onto.
PLACE = (4, 4)
GRIP = (30, 30)
ANSWERS = ("takes", "declines")


class DragSource:
    """A window to drag things out of, such as paths as text or bytes. `kill` ends it."""

    def __init__(self, session, kind, *items):
        self.process = subprocess.Popen([session.options.drag_source, f"--{kind}", *items],
                                        stdin=subprocess.PIPE, stdout=subprocess.PIPE)
        os.set_blocking(self.process.stdout.fileno(), False)
        self._unread = []
        self._part = b""
        session.helpers.append(self)
        expect_equal("drag source", self._next_word(), "ready")
        # Only a window that is to be seen: the window manager has found a place for that one already.
        hands.xdotool("search", "--sync", "--onlyvisible", "--name", "^Drag source$",
                      "windowmove", "--sync", *PLACE)

    def _read(self):
        """Everything that the source has said and nobody has taken."""
        try:
            said = os.read(self.process.stdout.fileno(), 65536)
        except BlockingIOError:
            return self._unread
        if not said:
            raise Unmet("the drag source has ended")
        *lines, self._part = (self._part + said).split(b"\n")
        self._unread += [line.decode() for line in lines]
        return self._unread

    def _next_word(self, seconds=SECONDS):
        wait_for("word of the drag source", self._read, seconds)
        return self._unread.pop(0)

    def drag_to(self, *points):
        """Takes hold, and goes to the last of the points by way of the others."""
        self._read().clear()
        hands.drag(GRIP, points[-1], points[:-1])

    def move_to(self, *points):
        """Goes on with what it has hold of."""
        self._read().clear()
        for point in points:
            hands.move_to(*point)

    def await_answer(self, expected):
        """Waits until the window that was moved to says "takes" or "declines", and it is that."""
        def answered():
            return expected in self._read()

        wait_for(f'answer "{expected}"', answered)

    def drop(self, seconds=SECONDS):
        """Lets go; how the other program took it."""
        hands.release()
        while True:
            word = self._next_word(seconds)
            if word not in ANSWERS:
                return word

    def drop_onto(self, *points):
        """Drags by way of the points onto the last one, and drops when the window there takes it."""
        self.drag_to(*points)
        self.await_answer("takes")
        expect_equal("answer to the drop", self.drop(), "copied")

    def close(self):
        self.process.stdin.close()
        self.process.wait(20)

    def kill(self):
        if self.process.poll() is None:
            self.process.kill()
        self.process.wait()
