"""CPU time of the idle program."""

import os
import subprocess
import time

from figures import material, programs
from figures.row import Row

SECONDS = 5


def _cpu_seconds(pid):
    """The CPU time of all threads of the process."""
    nanoseconds = 0
    for thread in os.listdir(f"/proc/{pid}/task"):
        with open(f"/proc/{pid}/task/{thread}/schedstat", encoding="ascii") as statistics:
            nanoseconds += int(statistics.read().split()[0])
    return nanoseconds / 1e9


def _idle_cpu_seconds(command, is_reporting):
    window = subprocess.Popen(command, stdin=subprocess.DEVNULL, stdout=subprocess.PIPE)
    try:
        if is_reporting:
            window.stdout.readline()
        # By then, start-up has finished.
        time.sleep(2)
        before = _cpu_seconds(window.pid)
        time.sleep(SECONDS)
        return _cpu_seconds(window.pid) - before
    finally:
        window.kill()
        window.wait()
        window.stdout.close()


def rows(work):
    tracks = material.make_tracks(os.path.join(work, "few"), 3, 1)
    folder = os.path.dirname(tracks[0])
    driven = programs.program("driven-window")
    out = os.path.join(work, "idle")
    windows = {
        "as it starts": _idle_cpu_seconds([programs.program("kestrel")], False),
        "with a queue": _idle_cpu_seconds([driven, "--linger", folder], True),
        "after a batch": _idle_cpu_seconds([driven, "--linger", "--destination", out, folder], True),
    }
    for name, seconds in windows.items():
        yield Row(f"CPU in five idle seconds, {name}", "ms CPU", None, seconds * 1000, "0", seconds == 0)
