"""Drags from another program."""

import itertools
import os
import subprocess

from driver import input, tree
from driver.waiting import SECONDS, Unmet, expect_equal, wait_for

# In the source's window.
GRIP = (30, 30)
ANSWERS = ("takes", "declines")
# As often as that an answer is looked for before the hand moves.
STILL = 25


def drop_files(session, node, *paths):
    """Drags files from another program onto the middle of a node, and drops them there."""
    source = DragSource(session, "files", *paths)
    source.drop_onto(tree.middle(node))
    source.close()


class DragSource:
    """A window to drag things out of, such as paths as text or bytes. `kill` ends it."""

    def __init__(self, session, kind, *items):
        self.process = subprocess.Popen([session.options.drag_source, f"--{kind}", *items],
                                        stdin=subprocess.PIPE, stdout=subprocess.PIPE)
        os.set_blocking(self.process.stdout.fileno(), False)
        self._unread = []
        self._part = b""
        self._place = GRIP
        session.helpers.append(self)
        expect_equal("drag source", self._next_word(), "ready")

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
        input.drag(GRIP, points[-1], points[:-1])
        self._place = points[-1]

    def move_to(self, *points):
        """Goes on with what it has hold of."""
        self._read().clear()
        for point in points:
            input.move_to(*point)
        self._place = points[-1]

    def await_answer(self, expected):
        """Waits until the window that was moved to says "takes" or "declines", and it is that."""
        self._await_word(expected)
        # A drag begins where the pointer is by then, and goes back to each step of its way from there. Only
        # the answer to a further step is the last one.
        self._read().clear()
        self._nudge()
        self._await_word(expected)

    def _nudge(self):
        x, y = self._place
        input.move_to(x + 1, y)
        input.move_to(x, y)

    def _await_word(self, expected):
        tries = itertools.count(1)

        def is_said():
            if expected in self._read():
                return True
            # A hand is never still, and a program that is slow to begin a drag knows of it by that alone.
            if next(tries) % STILL == 0:
                self._nudge()
            return False

        wait_for(f'answer "{expected}"', is_said)

    def drop(self, seconds=SECONDS):
        """Lets go; how the other program took it."""
        input.release()
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
        # The display learns of it later than this process does.
        wait_for("end of the drag source's window",
                 lambda: (input.keyboard_window() or [None])[0] not in (None, self.process.pid))

    def kill(self):
        if self.process.poll() is None:
            self.process.kill()
        self.process.wait()
