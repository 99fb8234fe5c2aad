"""The processes that a scenario starts, all descendants included."""

import ctypes
import os
import pathlib

PR_SET_CHILD_SUBREAPER = 36


def adopt_orphans():
    """Makes this process the subreaper: orphans of the program become its children."""
    if ctypes.CDLL(None, use_errno=True).prctl(PR_SET_CHILD_SUBREAPER, 1, 0, 0, 0) != 0:
        raise OSError(ctypes.get_errno(), "prctl")


def children(pid):
    """The pids of a process's children, zombies included."""
    found = []
    for file in pathlib.Path(f"/proc/{pid}/task").glob("*/children"):
        try:
            found += [int(child) for child in file.read_text().split()]
        except OSError:  # A thread that ended.
            pass
    return found


def reap_zombies(except_for):
    """Reaps the adopted children that have exited, as init does."""
    for pid in children(os.getpid()):
        if pid not in except_for and not is_running(pid):
            os.waitpid(pid, 0)


def describe(pid):
    try:
        status = pathlib.Path(f"/proc/{pid}/stat").read_text()
        command = pathlib.Path(f"/proc/{pid}/cmdline").read_bytes().replace(b"\0", b" ")
    except OSError:
        return f"{pid} (gone)"
    state = status.rpartition(")")[2].split()[0]
    return f"{pid} {state} {os.fsdecode(command) or status.split()[1]}"


def is_running(pid):
    try:
        status = pathlib.Path(f"/proc/{pid}/stat").read_text()
    except OSError:
        return False
    return status.rpartition(")")[2].split()[0] not in "ZX"
