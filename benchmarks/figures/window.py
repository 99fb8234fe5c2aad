"""CPU time of what a user sees and does in the window."""

import json
import statistics
import subprocess

from figures import programs
from figures.row import Row, at_most_times


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


def _beside_few(name, few, measured, walk):
    """A row whose floor is the same with ten jobs. One that walks over the queue may take a walk longer."""
    return Row(name, "ms CPU", few, measured, "at most 1.2 times and a walk", measured <= 1.2 * few + walk)


def rows(runs):
    medians = _medians(runs)

    def median(name, count=100_000):
        return medians[f"{name}/{count}"]

    walk, walk_after_pause = median("queueWalk"), median("queueWalkAfterPause")
    yield Row("one walk over the queue, 100,000 jobs", "ms CPU", None, walk, None, None)
    yield Row("one walk over the queue after a pause, 100,000 jobs", "ms CPU", None, walk_after_pause, None, None)
    yield _beside_few("one progress report, applied and painted, 100,000 jobs beside 10",
                      median("progressReport", 10), median("progressReport"), walk)
    yield _beside_few("a conversion's end and the next one's start, painted, 100,000 jobs beside 10",
                      median("stateChange", 10), median("stateChange"), walk_after_pause)
    step = median("wheelStep")
    yield at_most_times("one wheel step in the list, 100,000 jobs beside 10", "ms CPU", median("wheelStep", 10),
                        step, 1.2)
    yield at_most_times("the same beside painting it from a picture", "ms CPU", median("wheelStepOfPictures"), step, 3)
    yield at_most_times("the same beside a plain list view", "ms CPU", median("wheelStepOfPlainList"), step, 0.5)
