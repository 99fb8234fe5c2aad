#!/usr/bin/python3
"""Runs one scenario with the installed program on the current display.

Usage: run.py [--folder FOLDER] --list
       run.py [--folder FOLDER] --program PATH --pictures FOLDER [--stand-in PATH] [--with-mounts PATH]
              [--drag-source PATH] [--locales FOLDER] [--keep FOLDER] NAME

--folder has the scenarios, in scenarios/, and the packages that they share; the default is this file's.

A scenario starts with empty folders and must leave no process and no change in the home folder. One that
fails saves a screenshot to --pictures. The demonstration copies its output files to --keep. --stand-in,
--with-mounts, --drag-source and --locales are required by some scenarios only.
"""

import argparse
import importlib
import pathlib
import subprocess
import sys
import time
import traceback

HERE = pathlib.Path(__file__).resolve().parent
sys.dont_write_bytecode = True
sys.path.insert(0, str(HERE))


def load(folder):
    if folder != HERE:
        sys.path.insert(0, str(folder))
    from driver.registry import SCENARIOS

    for file in sorted((folder / "scenarios").glob("[a-z]*.py")):
        importlib.import_module(f"scenarios.{file.stem}")
    return SCENARIOS


def run(name, scenario, options):
    from gi.repository import GLib

    from driver import processes
    from driver.session import Session
    from driver.waiting import Unmet

    processes.adopt_orphans()
    session = Session(options)
    start = time.monotonic()
    try:
        scenario.run(session)
        session.check()
        print(f"{name}: passed in {time.monotonic() - start:.1f} s")
        return 0
    except (Unmet, GLib.Error, OSError, subprocess.SubprocessError, AssertionError) as error:
        traceback.print_exc()
        print(f"failed: {name}: {error}")
        session.report(name)
        return 1
    finally:
        session.close()


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--list", action="store_true")
    parser.add_argument("--folder", type=pathlib.Path, default=HERE)
    for option in ("program", "stand-in", "with-mounts", "drag-source", "locales", "pictures", "keep"):
        parser.add_argument(f"--{option}")
    parser.add_argument("name", nargs="?")
    options = parser.parse_args()
    scenarios = load(options.folder)
    if options.list:
        for name, scenario in scenarios.items():
            print(scenario.label, scenario.display_size, name)
        return 0
    return run(options.name, scenarios[options.name], options)


if __name__ == "__main__":
    sys.exit(main())
