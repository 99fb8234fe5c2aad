"""CPU time of what a user sees and does in the window."""

import json
import statistics
import subprocess

from figures import programs
from figures.row import Row, at_most


def _medians(runs):
    """Returns the median of each benchmark in milliseconds; the runs are in random order."""
    report = json.loads(programs.output_of(
        [programs.program("window-benchmarks"), "--benchmark_format=json",
         f"--benchmark_repetitions={runs}", "--benchmark_enable_random_interleaving=true"],
        stderr=subprocess.DEVNULL))
    times = {}
    for run in report["benchmarks"]:
        if run["run_type"] == "iteration":
            name = "/".join(run["name"].split("/")[:2])
            times.setdefault(name, []).append(run["real_time"] / 1e6)
    return {name: statistics.median(found) for name, found in times.items()}


def rows(runs):
    medians = _medians(runs)
    few, many = medians["progressReport/10"], medians["progressReport/10000"]
    yield Row("one progress report, applied and painted: 10,000 jobs beside 10", "ms CPU", few, many,
              "at most 1.5 times, and at most 0.5 ms", many <= 1.5 * few and many <= 0.5)
    yield at_most("one progress report, applied and painted, 100,000 jobs", "ms CPU",
                  medians["progressReport/100000"], 3)
    yield at_most("a conversion's end and the next one's start, painted, 100,000 jobs", "ms CPU",
                  medians["stateChange/100000"], 4)
    yield at_most("one wheel step in the list, 100,000 jobs", "ms CPU", medians["wheelStep/100000"], 1.5)
