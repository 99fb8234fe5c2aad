"""A queue of a million jobs beside one of a hundred thousand: what grows, grows at most linearly, and the window
answers all the same."""

import json
import os
import shutil
import statistics
import time

from figures import material, programs
from figures.row import Row

FEW = 100_000
MANY = 1_000_000
TRACKS = 50
# Ten times the jobs may take so many times as long: memory is slower than the caches.
LINEAR = 11
# Sorting takes n log n steps.
SORTED = 12
# What a user perceives as at once: one frame, and a reaction to a click.
FRAME = 16
REACTION = 100

ADD = "ConverterViewModel::add on a tree of 1,000,000 tracks in 20,000 folders"
IN_BATCH = ((FRAME, "progress_report", "one progress report, applied and painted"),
            (FRAME, "end_and_start", "a conversion's end and the next one's start, painted"),
            (FRAME, "middle_removed_in_batch", "a job in the middle removed in a batch, painted"),
            (FRAME, "last_removed_in_batch", "the last job removed in a batch, painted"),
            (FRAME, "longest_response_in_batch",
             "longest response time of the event loop while conversions end as fast as they can"))
IDLE = ((REACTION, "first_frame", "from the end of add to the frame painted"),
        (FRAME, "wheel_step", "one wheel step in the list"),
        (FRAME, "page", "one page of the list"),
        (FRAME, "drag", "one move of the scroll bar's thumb"),
        (FRAME, "home_or_end", "the key Home or End in the list"),
        (FRAME, "resize", "the window made wider or narrower, painted"),
        (REACTION, "start", "from the click on the start button to the frame painted"),
        (REACTION, "cancel", "from the click on Cancel to the end of the batch painted"),
        (REACTION, "middle_removed_idle", "a job in the middle removed, painted"),
        (REACTION, "last_removed_idle", "the last job removed, painted"))


def _million_jobs(mode, argument, **options):
    return programs.output_of([programs.program("million-jobs"), mode, str(argument)], **options)


def _offscreen(program, *arguments):
    environment = dict(os.environ, QT_QPA_PLATFORM="offscreen")
    return programs.output_of([programs.program(program), *map(str, arguments)], env=environment).split()


def _linear(name, unit, few, many, times=LINEAR):
    """A row whose floor is the same with a tenth of the jobs."""
    return Row(name, unit, few, many, f"at most {times} times", many <= times * few)


def _frame(limit, name, few, many):
    return Row(f"{name}, 1,000,000 jobs beside 100,000", "ms", few, many, f"at most {limit} ms", many <= limit)


def _window_report(tree):
    output = _million_jobs("folder", tree)
    end = time.monotonic()
    report = json.loads(output)
    report["quit"] = (end - report["closed"]) * 1000
    return report


def _window_rows(runs, trees):
    reports = programs.interleaved(runs, *(lambda tree=tree: _window_report(tree) for tree in trees))
    for count, found in zip((FEW, MANY), reports):
        if any(report["jobs"] != count for report in found):
            raise SystemExit("benchmarks: not every track was queued")
    medians = [{key: statistics.median(report[key] for report in found) for key in found[0]} for found in reports]

    def both(key):
        return [median[key] for median in medians]

    yield _linear(ADD, "s", *both("add_seconds"), SORTED)
    for limit, key, name in (*IDLE, *IN_BATCH):
        yield _frame(limit, name, *both(key))
    path = medians[1]["path_bytes"] / MANY
    added = medians[1]["memory_kilobytes"] * 1024 / MANY
    yield Row("memory that one of 1,000,000 queued jobs adds, beside its path", "bytes", path, added,
              "at most 250 bytes more", added <= path + 250)
    yield _linear("from the close of the window to the end of the process", "ms", *both("quit"))


def _drop_rows(runs):
    few, many = programs.interleaved(runs, *(lambda count=count: _offscreen("hot-paths", "drop", count)
                                             for count in (FEW, MANY)))
    yield _linear("a drop of 1,000,000 loose files, queued and painted", "s",
                  *(statistics.median(float(found[1]) for found in reports) for reports in (few, many)))


def _batch_row():
    few, many = (float(_offscreen("million-jobs", "batch", count)[1]) for count in (FEW, MANY))
    return _linear("a batch of 1,000,000 conversions that end at once, without a window", "s", few, many)


def _stall_row(runs, work, trees):
    out = os.path.join(work, "converted")

    def longest(tree):
        report = programs.drive("--destination", out, "--format", "WAV", "--seconds", "8", "--watch-stalls", tree)
        shutil.rmtree(out)
        return report["batch"]["longest_stall_milliseconds"]

    return _frame(FRAME, "longest stall of the main thread while ffmpeg converts",
                  *programs.interleaved_medians(runs, *(lambda tree=tree: longest(tree) for tree in trees)))


def rows(runs, work):
    sound = os.path.join(work, "sound.opus")
    material.make_opus(sound, 1)
    # A million runs take longer, and vary less.
    runs = max(3, runs // 2)
    trees = [material.make_tree(os.path.join(work, str(count)), count // TRACKS, TRACKS, contents=sound)
             for count in (FEW, MANY)]
    yield from _window_rows(runs, trees)
    yield from _drop_rows(runs)
    yield _batch_row()
    yield _stall_row(runs, work, trees)
