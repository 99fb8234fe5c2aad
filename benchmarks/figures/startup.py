"""From process start to the first painted frame, beside an empty window."""

import statistics
import time

from figures import programs
from figures.row import Row, at_most_times


def _first_frame(window):
    start = time.clock_gettime_ns(time.CLOCK_MONOTONIC)
    output = programs.output_of([programs.program(f"first-frame-{window}"), str(start)], seconds=30)
    milliseconds, kilobytes = output.split()
    return float(milliseconds), int(kilobytes) / 1024


def rows(runs):
    # A time this short needs more runs.
    windows = ["bare", "word", "kestrel"]
    found = programs.interleaved(max(runs, 21), *(lambda window=window: _first_frame(window)
                                                  for window in windows))
    times, memories = ({window: statistics.median(run[kind] for run in runs_of_it)
                        for window, runs_of_it in zip(windows, found)} for kind in (0, 1))
    yield at_most_times("process start to first painted frame", "ms", times["bare"], times["kestrel"], 1.2)
    yield Row("the same of a window with a single word", "ms", times["bare"], times["word"], None, None)
    yield Row("resident memory after the first frame", "MB", memories["bare"], memories["kestrel"],
              "at most 8 MB more", memories["kestrel"] <= memories["bare"] + 8)
    yield Row("the same of a window with a single word", "MB", memories["bare"], memories["word"], None, None)
