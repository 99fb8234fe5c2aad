"""From process start to the first frame, beside windows with less in them."""

import os
import re
import resource
import statistics
import subprocess
import tempfile
import time

from figures import fonts, programs
from figures.row import Row, at_most_times

WINDOWS = ["bare", "word", "texts", "kestrel"]
DROP_CACHES = "/proc/sys/vm/drop_caches"


def _first_frame(window, **options):
    """Returns the time of the first frame in milliseconds, and the RSS in MB at that time."""
    start = time.clock_gettime_ns(time.CLOCK_MONOTONIC)
    output = programs.output_of([programs.program(f"first-frame-{window}"), str(start)], seconds=60, **options)
    milliseconds, kilobytes = output.split()
    return float(milliseconds), int(kilobytes) / 1024


def _until_idle(window):
    return float(programs.output_of([programs.program(f"first-frame-{window}"), "0", "idle"], seconds=60))


def _instructions(window, work):
    log = os.path.join(work, f"{window}.log")
    programs.output_of(["valgrind", "--tool=callgrind", f"--log-file={log}", f"--callgrind-out-file={log}.out",
                        programs.program(f"first-frame-{window}"), "0"])
    with open(log, encoding="utf-8") as lines:
        return int(re.search(r"Collected : (\d+)", lines.read()).group(1))


def _mmap_calls(window, work):
    log = os.path.join(work, f"{window}.strace")
    programs.output_of(["strace", "-f", "-e", "trace=mmap", "-o", log, programs.program(f"first-frame-{window}"), "0"])
    with open(log, encoding="utf-8") as lines:
        return sum("mmap(" in line for line in lines)


def _cold(window):
    """Returns the time of the first frame in milliseconds after the page cache has been dropped, and the MB that
    the process has read from disk."""
    os.sync()
    with open(DROP_CACHES, "w", encoding="ascii") as file:
        file.write("3")
    # The interpreter's own pages, and those that starting a process needs.
    subprocess.run(["true"], check=True)
    before = _read_by_children()
    milliseconds, _ = _first_frame(window)
    return milliseconds, (_read_by_children() - before) / 1e6


def _read_by_children():
    return resource.getrusage(resource.RUSAGE_CHILDREN).ru_inblock * 512


def _medians(runs, windows, measure):
    """Returns, for each window, the median of each of the figures that `measure` returns."""
    found = programs.interleaved(runs, *(lambda window=window: measure(window) for window in windows))
    return {window: [statistics.median(column) for column in zip(*results)]
            for window, results in zip(windows, found)}


def rows(runs):
    # A time this short needs more runs.
    runs = max(runs, 41)
    warm = _medians(runs, WINDOWS, _first_frame)
    times, memories = ({window: figures[kind] for window, figures in warm.items()} for kind in (0, 1))
    first_frame = "process start to first frame"
    yield at_most_times(f"{first_frame}, beside a single word", "ms", times["word"], times["kestrel"], 1.1)
    yield at_most_times(f"{first_frame}, beside an empty window", "ms", times["bare"], times["kestrel"], 1.4)
    yield Row("the same of a single word, beside an empty window", "ms", times["bare"], times["word"], None, None)
    yield Row("the same of the texts in labels, beside a single word", "ms", times["word"], times["texts"], None, None)
    with tempfile.TemporaryDirectory() as work:
        counts = {window: _instructions(window, work) / 1e6 for window in WINDOWS[1:]}
        yield at_most_times("instructions until then, beside a single word", "million", counts["word"],
                            counts["kestrel"], 1.4)
        yield Row("the same of the texts in labels, beside a single word", "million", counts["word"],
                  counts["texts"], None, None)
        calls = {window: _mmap_calls(window, work) for window in ("word", "kestrel")}
        yield at_most_times("mmap calls until then, beside a single word", "calls", calls["word"], calls["kestrel"],
                            1.2)
        with fonts.many_fonts(work) as environment:
            crowded = _medians(runs, WINDOWS[1:], lambda window: _first_frame(window, env=environment))
        yield at_most_times(f"{first_frame} with {fonts.COUNT:,} fonts, beside a single word", "ms",
                            crowded["word"][0], crowded["kestrel"][0], 1.1)
        yield Row("the same of the texts in labels, beside a single word", "ms", crowded["word"][0],
                  crowded["texts"][0], None, None)
    idle = _medians(max(runs // 4, 7), ["word", "kestrel"], lambda window: (_until_idle(window),))
    yield at_most_times("CPU time from process start until idle, beside a single word", "ms", idle["word"][0],
                        idle["kestrel"][0], 1.3)
    if os.access(DROP_CACHES, os.W_OK):
        cold = _medians(max(runs // 4, 7), ["word", "kestrel"], _cold)
        yield at_most_times(f"{first_frame} with a cold page cache, beside a single word", "ms", cold["word"][0],
                            cold["kestrel"][0], 1.15)
        yield at_most_times("read from disk until then, beside a single word", "MB", cold["word"][1],
                            cold["kestrel"][1], 1.2)
    yield Row("resident memory after the first frame, beside an empty window", "MB", memories["bare"],
              memories["kestrel"], "at most 6 MB more", memories["kestrel"] <= memories["bare"] + 6)
    yield Row("the same of a single word", "MB", memories["bare"], memories["word"], None, None)
    yield Row("the same of the texts in labels", "MB", memories["bare"], memories["texts"], None, None)
