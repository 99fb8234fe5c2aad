"""Instruction counts of the hot paths, whose cost grows with the number of files. They are free of noise and have
no goal; a change in them has a cause in the code."""

import os
import re
import subprocess

from figures import material, programs
from figures.row import Row


def _instructions(work, path, argument, expected):
    log = os.path.join(work, f"{path}.log")
    environment = dict(os.environ, QT_QPA_PLATFORM="offscreen")
    output = programs.output_of(
        ["valgrind", "--tool=callgrind", "--toggle-collect=countedWork", f"--log-file={log}",
         f"--callgrind-out-file={log}.out", programs.program("hot-paths"), path, str(argument)],
        env=environment)
    if int(output) != expected:
        raise SystemExit(f"benchmarks: {path} worked on {output.strip()} instead of {expected}")
    with open(log, encoding="utf-8") as lines:
        return int(re.search(r"Collected : (\d+)", lines.read()).group(1))


def rows(work):
    tree = material.make_tree(os.path.join(work, "ten-thousand"), 200, 50)
    for name, path, argument in (("intake of 10,000 files", "intake", tree),
                                 ("one refresh with 10,000 jobs", "refresh", 10_000),
                                 ("parsing 10,000 progress lines", "progress-lines", 10_000)):
        count = _instructions(work, path, argument, 10_000)
        yield Row(name, "instructions", None, count, None, None)
