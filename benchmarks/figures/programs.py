"""The programs that are measured, and how they are started."""

import json
import os
import pathlib
import statistics
import subprocess
import time

ROOT = pathlib.Path(__file__).resolve().parents[2]
BUILD = ROOT / "build" / "release"
TARGETS = ["kestrel", "first-frame-bare", "first-frame-word", "first-frame-kestrel", "driven-window",
           "window-benchmarks", "hot-paths"]
# As the program finds it.
FFMPEG = next((path for path in ("/opt/homebrew/bin/ffmpeg", "/usr/local/bin/ffmpeg", "/usr/bin/ffmpeg")
               if os.access(path, os.X_OK)), "ffmpeg")


def build():
    subprocess.run([ROOT / "scripts" / "setup"], check=True)
    for command in (["cmake", "--preset", "release"],
                    ["cmake", "--build", "--preset", "release", "--target", *TARGETS]):
        subprocess.run(command, cwd=ROOT, check=True, stdout=subprocess.DEVNULL)


def program(name):
    return str(BUILD / name if name == "kestrel" else BUILD / "benchmarks" / name)


def output_of(command, seconds=600, **options):
    """What the command writes to standard output; it must exit with 0."""
    return subprocess.run(command, check=True, stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, text=True,
                          timeout=seconds, **options).stdout


def drive(*arguments):
    """The report of a window that is driven without a user."""
    return json.loads(output_of([program("driven-window"), *map(str, arguments)]))


def wall_seconds(action):
    """How long the action takes."""
    start = time.perf_counter()
    action()
    return time.perf_counter() - start


def in_turn(runs, *actions):
    """Runs the actions in turn, so that what changes on the machine meanwhile meets all alike: for
    each action the list of its results."""
    results = [[] for _ in actions]
    for _ in range(runs):
        for action, found in zip(actions, results):
            found.append(action())
    return results


def medians_in_turn(runs, *actions):
    return [statistics.median(found) for found in in_turn(runs, *actions)]
