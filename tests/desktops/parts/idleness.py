"""Waits until processes have nothing left to do, however slow the machine is."""

import pathlib
import time

from driver.waiting import wait_for

# In seconds. Longer than any pause between two steps of one reaction; a busy machine does not shorten it, because
# a process that waits for a processor counts as busy.
QUIET = 0.4
# A process may wake up this often in that time, for a timer.
WAKE_UPS = 2


def _tasks(pid):
    """The number of time slices of each thread of the process, and whether one of them is runnable."""
    slices, is_runnable = 0, False
    for task in pathlib.Path(f"/proc/{pid}/task").glob("*"):
        try:
            is_runnable |= (task / "stat").read_text().rpartition(")")[2].split()[0] in "RD"
            slices += int((task / "schedstat").read_text().split()[2])
        except OSError:  # The thread ended.
            pass
    return slices, is_runnable


def await_idle(*pids):
    """Waits until all processes have been asleep for a while."""
    seen = {}
    since = [time.monotonic()]

    def is_quiet():
        now = time.monotonic()
        for pid in pids:
            slices, is_runnable = _tasks(pid)
            if is_runnable or slices > seen.get(pid, 0) + WAKE_UPS:
                seen.update({other: _tasks(other)[0] for other in pids})
                since[0] = now
                return False
        return now - since[0] >= QUIET

    wait_for("idle processes", is_quiet)
