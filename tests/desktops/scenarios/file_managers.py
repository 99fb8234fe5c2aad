"""Drags from real file managers on X11, under Xfwm4."""

import functools
import os

from driver import tree
from driver.registry import scenario
from driver.tree import Role
from driver.waiting import expect, expect_equal, wait_for

from parts import pointer, window_manager
from parts.file_manager import COMMANDS, DropTarget, FileManager, drag

DISPLAY = "1900x1000"
WINDOW, TARGET = (800, 40), (40, 700)
# Of Kestrel's window: all rows are visible.
SIZE = (1000, 900)


def make_files(folder):
    """Fills a folder with files of odd names and a folder."""
    album = folder / "album #2 100%"
    album.mkdir(parents=True)
    for name in ("10.opus", "2.opus", "cover.png"):
        (album / name).touch()
    for name in ("b #1.opus", "a 50%.OGG", "c?d e.oga", "%41.opus", "notes.txt"):
        (folder / name).touch()
    with open(os.fsencode(folder) + b"/caf\xe9.opus", "wb"):
        pass


def queued(paths):
    """The names and folders that the queue shows after a drop of these paths."""
    rows = []
    for path in paths:
        if os.path.isdir(path):
            rows += [(name, path) for name in (b"2.opus", b"10.opus")]
        elif not path.endswith(b".txt"):
            rows.append((os.path.basename(path), os.path.dirname(path)))
    return [(name.decode(errors="replace"), os.path.basename(folder).decode()) for name, folder in rows]


def shown(program):
    return [(row.name, row.folder) for row in program.rows()]


def drop_zone(program):
    return wait_for("drop zone", lambda: program.find(Role.PANEL, "Drop zone"))


def drops_from(session, name):
    """What a target of GTK gets from the same drag says what was dragged, and in which order."""
    first, second = session.music / "first", session.music / "second"
    make_files(first)
    second.mkdir()
    for number in (3, 1, 2):
        (second / f"later {number}.opus").touch()
    xfwm4 = window_manager.start_xfwm4(session)
    target = DropTarget(session, TARGET)
    program = session.start()
    program.window()
    pointer.await_active(program.pid)
    window_manager.move(pointer.active_window(), *WINDOW, *SIZE)

    expected = []
    for folder, place in ((first, drop_zone), (second, lambda program: program.find(Role.LIST))):
        manager = FileManager(session, name, folder)
        start = manager.select_all()
        drag(start, target.middle())
        wait_for("drop", lambda: len(target.drops()) == (2 if expected else 1))
        dragged = target.drops()[-1]
        expect_equal("dragged files", sorted(dragged), sorted(
            os.path.join(os.fsencode(folder), file) for file in os.listdir(os.fsencode(folder))))
        expected += queued(dragged)
        drag(start, tree.middle(place(program)))
        wait_for("rows", lambda: len(shown(program)) == len(expected))
        expect_equal("rows", shown(program), expected)
        manager.close()
    expect("nothing was moved", len(os.listdir(first)) == 7 and len(os.listdir(second)) == 3)
    program.await_text(f"{len(expected)} audio files · 0 complete")
    program.quit()
    for helper in (target, xfwm4):
        helper.close()


for name in COMMANDS:
    scenario(name=f"drops-from-{name}", display_size=DISPLAY)(functools.partial(drops_from, name=name))
