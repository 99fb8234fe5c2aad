"""Drags from another program."""

import subprocess

from driver import hands
from driver.waiting import Unmet, expect_equal

# Where the source's window is put: beside nothing that a scenario drops onto.
PLACE = (4, 4)
GRIP = (30, 30)


class DragSource:
    """A window to drag things out of. `kill` ends it."""

    def __init__(self, session, kind, *items):
        self.process = subprocess.Popen([session.options.drag_source, f"--{kind}", *items],
                                        stdin=subprocess.PIPE, stdout=subprocess.PIPE, text=True)
        session.helpers.append(self)
        expect_equal("drag source", self._word(), "ready")
        hands.xdotool("search", "--sync", "--name", "^Drag source$", "windowmove", "--sync", *PLACE)

    def _word(self):
        line = self.process.stdout.readline()
        if not line:
            raise Unmet("the drag source has ended")
        return line.strip()

    def drag_to(self, *points):
        """Takes hold, and goes to the last of the points by way of the others."""
        hands.drag(GRIP, points[-1], points[:-1])

    def drop(self):
        """Lets go; how the other program took it."""
        hands.release()
        return self._word()

    def close(self):
        self.process.stdin.close()
        self.process.wait(20)

    def kill(self):
        if self.process.poll() is None:
            self.process.kill()
        self.process.wait()
