#!/usr/bin/python3
"""Plays a scenario with the installed program on the display that is there.

Usage: run.py --list
       run.py --program PATH --pictures FOLDER [--stand-in PATH] [--with-mounts PATH]
              [--drag-source PATH] [--locales FOLDER] [--keep FOLDER] NAME

Each scenario starts clean and must end clean. One that fails leaves a picture of the display. The
demonstration keeps what it made where --keep says. The other programs are for the scenarios that need them.
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


def load():
    from driver.registry import SCENARIOS

    for file in sorted((HERE / "scenarios").glob("[a-z]*.py")):
        importlib.import_module(f"scenarios.{file.stem}")
    return SCENARIOS


def play(name, scenario, options):
    from gi.repository import GLib

    from driver import processes
    from driver.session import Session
    from driver.waiting import Unmet

    processes.adopt_orphans()
    session = Session(options)
    start = time.monotonic()
    try:
        scenario.play(session)
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
    for option in ("program", "stand-in", "with-mounts", "drag-source", "locales", "pictures", "keep"):
        parser.add_argument(f"--{option}")
    parser.add_argument("name", nargs="?")
    options = parser.parse_args()
    scenarios = load()
    if options.list:
        for name, scenario in scenarios.items():
            print(scenario.label, scenario.display_size, name)
        return 0
    return play(options.name, scenarios[options.name], options)


if __name__ == "__main__":
    sys.exit(main())
