"""The measured programs, and how they are run."""

import json
import os
import pathlib
import statistics
import subprocess
import time

ROOT = pathlib.Path(__file__).resolve().parents[2]
BUILD = ROOT / "build" / "release"
TARGETS = ["kestrel", "first-frame-bare", "first-frame-word", "first-frame-texts", "first-frame-kestrel",
           "driven-window", "window-benchmarks", "hot-paths", "million-jobs"]
# The same search as the program's.
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
    """Returns the stdout of the command. Raises CalledProcessError unless it exits with 0."""
    return subprocess.run(command, check=True, stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, text=True,
                          timeout=seconds, **options).stdout


def drive(*arguments):
    """Runs driven-window with these arguments; returns its report."""
    return json.loads(output_of([program("driven-window"), *map(str, arguments)]))


def wall_seconds(action):
    """Returns the wall-clock time of the action in seconds."""
    start = time.perf_counter()
    action()
    return time.perf_counter() - start


def interleaved(runs, *actions):
    """Runs the actions interleaved, so that drift affects all alike. Returns a list of results for each
    action."""
    results = [[] for _ in actions]
    for _ in range(runs):
        for action, found in zip(actions, results):
            found.append(action())
    return results


def interleaved_medians(runs, *actions):
    return [statistics.median(found) for found in interleaved(runs, *actions)]
