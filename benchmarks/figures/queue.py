"""Adding a large folder tree to the queue."""

import os
import statistics
import subprocess

from figures import material, programs
from figures.row import Row, at_most, at_most_times

FOLDERS = 2000
TRACKS = 50


def _find(tree):
    def pipeline():
        find = subprocess.Popen(["find", tree], stdout=subprocess.PIPE)
        subprocess.run(["sort", "-V"], stdin=find.stdout, stdout=subprocess.DEVNULL, check=True)
        find.stdout.close()
        find.wait()

    return programs.wall_seconds(pipeline)


def _drop(count):
    """Returns the seconds until a drop of loose files is queued and painted, and the longest response time of
    the event loop meanwhile in milliseconds."""
    environment = dict(os.environ, QT_QPA_PLATFORM="offscreen")
    jobs, seconds, longest = programs.output_of([programs.program("hot-paths"), "drop", str(count)],
                                                env=environment).split()
    if int(jobs) != count:
        raise SystemExit("benchmarks: not every dropped file was queued")
    return float(seconds), float(longest)


def rows(runs, work):
    tree = material.make_tree(os.path.join(work, "tree"), FOLDERS, TRACKS)
    _find(tree)  # Warms the page cache.
    found, reports = programs.interleaved(runs, lambda: _find(tree), lambda: programs.drive(tree)["add"])
    if any(report["jobs"] != FOLDERS * TRACKS for report in reports):
        raise SystemExit("benchmarks: not every track was queued")

    def median(key):
        return statistics.median(report[key] for report in reports)

    yield at_most_times("ConverterViewModel::add on a tree of 100,000 tracks in 2,000 folders", "s",
                        statistics.median(found), median("add_seconds"), 0.5)
    yield at_most("from the end of add to the frame painted, 100,000 jobs", "ms",
                  median("paint_seconds") * 1000, 16)
    path = median("path_bytes") / (FOLDERS * TRACKS)
    added = median("memory_kilobytes") * 1024 / (FOLDERS * TRACKS)
    yield Row("memory that a queued job adds, beside its path", "bytes", path, added,
              "at most 250 bytes more", added <= path + 250)
    half, whole = programs.interleaved(runs, lambda: _drop(50_000), lambda: _drop(100_000))
    yield at_most_times("a drop of 100,000 loose files, queued and painted, beside one of 50,000", "s",
                        statistics.median(seconds for seconds, _ in half),
                        statistics.median(seconds for seconds, _ in whole), 2.2)
    yield at_most("longest response time of the event loop meanwhile", "ms",
                  statistics.median(longest for _, longest in whole), 100)
