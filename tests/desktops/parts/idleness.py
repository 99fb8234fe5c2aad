"""Waits until a session has nothing left to do, however slow the machine is."""

import os
import pathlib
import time

from driver.waiting import wait_for

# In seconds. A busy machine does not shorten it, because a process that waits for a processor counts as busy.
QUIET = 0.4
# In seconds; Orca asks a window for thousands of answers, each of which waits for a processor on a busy machine.
PATIENCE = 120
# So often may processes wake up in the quiet time, for timers.
WAKE_UPS = 2


def _session():
    """The processes of the display, its buses and what runs on it, but for this one."""
    own = f"XDG_RUNTIME_DIR={os.environ['XDG_RUNTIME_DIR']}".encode()
    for process in pathlib.Path("/proc").glob("[0-9]*"):
        try:
            if process.name != str(os.getpid()) and own in (process / "environ").read_bytes().split(b"\0"):
                yield process
        except OSError:  # It ended, or is another user's.
            pass


def _activity(processes):
    """The number of time slices that the processes have had, and whether one of them wants another."""
    slices, is_runnable = 0, False
    for process in processes:
        try:
            for task in process.glob("task/*"):
                is_runnable |= (task / "stat").read_text().rpartition(")")[2].split()[0] in "RD"
                slices += int((task / "schedstat").read_text().split()[2])
        except OSError:  # The process or the thread ended.
            is_runnable = True
    return slices, is_runnable


def await_idle():
    """Waits until all processes of the session have been asleep for a while."""
    processes = list(_session())
    before, since = _activity(processes)[0], time.monotonic()

    def is_quiet():
        nonlocal before, since, processes
        slices, is_runnable = _activity(processes)
        # A process that ended counts as activity once: the next list is without it.
        if is_runnable or abs(slices - before) > WAKE_UPS:
            processes = list(_session())
            before, since = _activity(processes)[0], time.monotonic()
        return time.monotonic() - since >= QUIET

    wait_for("idle session", is_quiet, PATIENCE)
