#!/usr/bin/python3
"""Walks through the window of a Kestrel binary under Orca, and prints what Orca says at each step.

Usage: scripts/with-display tests/desktops/orca_walk.py [--files N] [--log FILE] PROGRAM [STEP...]

Runs on the current display, which should be a private one. Orca's settings are in a temporary folder. A STEP is one
of
    KEY                 such as Tab, Down, space, ctrl+o, as xdotool names them
    destination         chooses the output folder, through AT-SPI
    press:NAME          presses a button through AT-SPI
    wait:TEXT           goes on listening until Orca has said TEXT at any step, for ten seconds at most
The default is a walk through the whole window and one batch. --files is the number of tracks that are queued before
the first step (default 3); one more with a long name and without sound is queued after them, and fails. --log keeps
Orca's debug log.
"""

import argparse
import pathlib
import shutil
import sys
import time

HERE = pathlib.Path(__file__).resolve().parent
sys.dont_write_bytecode = True
sys.path[:0] = [str(HERE), str(HERE.parent / "e2e")]

WALK = [
    # Formats, slider, header, list.
    "Tab", "Tab", "Tab", "Up", "Down", "Home", "Tab", "Tab", "Tab",
    "Down", "Down", "Up", "End", "Home",
    # Footer, caption buttons, and round again.
    "Tab", "Tab", "Tab", "Tab", "Tab", "Tab",
    # AIFF and its picker.
    "Tab", "space", "Tab", "Tab", "Up", "Down", "space", "Up", "Return",
    # Menu.
    "F10", "Down", "Escape", "Escape",
    # Into the list from behind.
    "Tab", "Tab", "Tab", "shift+Tab", "shift+Tab", "shift+Tab",
    # The alert, then the batch.
    "Tab", "Tab", "Tab", "Tab", "Tab", "Return", "Return", "destination", "Return", "wait:finished",
    "shift+Tab", "shift+Tab", "shift+Tab", "End", "Home", "Delete",
]
NAME = "A track whose name is so long that no row of the list has room for all of it, and which has no sound in it"


def queue_files(session, program, count):
    from driver import media

    first = media.make_track(session.music / "1.opus")
    files = [first]
    for number in range(2, count + 1):
        files.append(session.music / f"{number}.opus")
        shutil.copy(first, files[-1])
    silent = session.music / f"{NAME}.opus"
    silent.write_bytes(b"no sound")
    program.add_files(*files, silent)


def report(reader, step):
    """Prints and returns what it has said since the last step."""
    said = reader.said()
    print(f"{step}:", *(f"    {utterance}" for utterance in said), sep="\n", flush=True)
    return said


def wait_for_text(reader, said, step, text):
    """Listens until one of the utterances has the text in it; `said` are those so far."""
    deadline = time.monotonic() + 10
    while not any(text in utterance.text for utterance in said) and time.monotonic() < deadline:
        time.sleep(1)
        said += report(reader, step)


def take_step(session, program, reader, said, name):
    if name == "destination":
        program.choose_destination(session.output)
    elif name.startswith("press:"):
        program.press(name.partition(":")[2])
    elif name.startswith("wait:"):
        wait_for_text(reader, said, name, name.partition(":")[2])
        return
    else:
        program.key(name)
    said += report(reader, name)


def main():
    parser = argparse.ArgumentParser(usage=__doc__)
    parser.add_argument("--files", type=int, default=3)
    parser.add_argument("--log")
    parser.add_argument("program")
    parser.add_argument("steps", nargs="*")
    options = parser.parse_args()

    from driver import processes
    from driver.session import Session
    from parts.screen_reader import ScreenReader

    processes.adopt_orphans()
    session = Session(options)
    try:
        reader = ScreenReader(session)
        program = session.start()
        program.window()
        if options.files:
            queue_files(session, program, options.files)
        said = report(reader, "start")
        for name in options.steps or WALK:
            take_step(session, program, reader, said, name)
    finally:
        if options.log:
            pathlib.Path(options.log).write_text(reader.debug_log())
        session.close()


if __name__ == "__main__":
    sys.exit(main())
