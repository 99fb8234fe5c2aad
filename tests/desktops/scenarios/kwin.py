"""The window on KWin, by keyboard and by pointer, with the desktop portal and with drags from a file manager."""

import itertools
import os

from driver import media, screen, tree
from driver.program import FILES_PANEL
from driver.registry import scenario
from driver.tree import Role
from driver.waiting import expect, expect_equal, wait_equal, wait_for

from parts import portal
from parts.file_manager import highlight
from parts.helper import Helper
from parts.kwin import KWin
from scenarios.compositors import await_active, expect_drawn, tab_to, use_by_keyboard
from scenarios.file_managers import drop_zone, make_files, queued, shown

# Polls without a change of place.
STEADY = 10
# More than the pointer has to move before a press is a drag.
DRAG_STEPS = (4, 8, 12, 16, 20)


def place(kwin):
    return next(window["rect"] for window in kwin.windows() if window["name"] == "Kestrel")


def follows_pointer(kwin, start, expected):
    """Presses at `start` and moves until the window changes, then checks that it changes with each further step."""
    before, steps = place(kwin), itertools.count(1)
    x, y = start
    kwin.move_to(x, y)
    kwin.press()

    # KWin takes the pointer over once the program has asked it to.
    def has_changed():
        nonlocal x, y
        x, y = x + next(steps) % 3, y + 1
        kwin.move_to(x, y)
        return place(kwin) != before

    wait_for("window that follows the pointer", has_changed)
    seen = []

    def is_steady():
        seen.append(place(kwin))
        return len(seen) > STEADY and len({*map(tuple, seen[-STEADY:])}) == 1

    wait_for("window that stays", is_steady)
    kwin.move_to(x + 40, y + 20)
    wait_equal("place", lambda: place(kwin), expected(*seen[-1]))
    kwin.release()


def pixels(kwin, rect):
    """The rows of the pixels in a rectangle of the screen."""
    left, top, width, height = rect
    _, _, pixel = kwin.screenshot()
    return [[pixel(x, y) for x in range(left, left + width)] for y in range(top, top + height)]


def is_blue(color):
    red, _, blue = color
    return blue > red + 100


def select_all(kwin, window):
    """Selects all files in a file manager's active window; returns a point of a selected one on the screen."""
    seen = []

    def highlighted():
        # Until the files are listed, there is nothing to select.
        kwin.key("ctrl+a")
        seen.append(pixels(kwin, window["rect"]))
        is_steady = len(seen) > STEADY and all(picture == seen[-1] for picture in seen[-STEADY:])
        # A selected file is drawn in blue.
        blue = [[color if is_blue(color) else None for color in row] for row in seen[-1]]
        return highlight([[None] * len(row) for row in blue], blue) if is_steady else None

    x, y = wait_for("highlighted file", highlighted)
    return window["rect"][0] + x, window["rect"][1] + y


def drag(kwin, start, zone):
    """Drags from a point to the middle of the drop zone, and drops there once the zone's border is highlighted."""
    left, top, *_ = place(kwin)
    zone_x, zone_y, width, height = tree.rectangle(zone)
    x, y = left + zone_x + width // 2, top + zone_y + height // 2
    # Of its margin and its left border.
    border = (left + zone_x, top + zone_y, 40, height)
    kwin.move_to(*start)
    kwin.press()
    for step in DRAG_STEPS:
        kwin.move_to(start[0] + step, start[1] + step)
    steps = itertools.count()

    def is_highlighted():
        kwin.move_to(x + next(steps) % 2, y)
        return any(screen.is_purple(color) for row in pixels(kwin, border) for color in row)

    wait_for("highlighted drop zone", is_highlighted)
    kwin.release()


@scenario()
def works_on_kwin(session):
    kwin = KWin(session, (1280, 800))
    program = session.start(**kwin.program_environment())
    await_active(program)
    window = kwin.await_window("Kestrel")
    expect_equal("pid", window["pid"], program.pid)
    expect_equal("size", window["rect"][2:], [960, 640])
    expect_drawn(kwin, program, window["rect"])
    use_by_keyboard(kwin, session, program)
    kwin.close()


@scenario()
def fills_a_small_screen_of_kwin(session):
    kwin = KWin(session, (640, 480))
    program = session.start(**kwin.program_environment())
    await_active(program)
    expect_equal("place", kwin.await_window("Kestrel")["rect"], [0, 0, 640, 480])
    names = tab_to(kwin, program, "Choose Folder")
    expect_equal("way of the focus", names, [
        "MP3", "AIFF", "WAV", "Quality", "Folder", "Add Audio", "Choose Audio", "Choose Folder"])
    x, y, width, height = tree.rectangle(program.focus())
    expect(f"the focus at {x}, {y} is on the screen", 0 <= x <= 640 - width and 0 <= y <= 480 - height)
    kwin.key("ctrl+q")
    expect_equal("status", program.await_end(), 0)
    kwin.close()


@scenario()
def opens_the_portal_panel_as_a_child_on_kwin(session):
    kwin = KWin(session, (1280, 800))
    media.make_track(session.music / "song.opus", seconds=0.2)
    environment = kwin.program_environment()
    backend = portal.start_kde_backend(session, **environment)
    frontend = portal.start_frontend(session, **portal.KDE)
    program = session.start(**environment)
    title = f"{FILES_PANEL[0]} — Portal"
    for choose in (lambda panel: panel.enter(session.music / "song.opus", FILES_PANEL[1]),
                   lambda panel: panel.cancel()):
        await_active(program)
        kwin.key("ctrl+o")
        panel = portal.Panel(backend, FILES_PANEL[0])
        window = kwin.await_window(title)
        expect_equal("windows", [(window["name"], window["parent"]) for window in kwin.windows()],
                     [("Kestrel", None), (title, "Kestrel")])
        choose(panel)
        kwin.await_window("Kestrel")
        program.await_names(["song.opus"])
    await_active(program)
    kwin.key("ctrl+q")
    expect_equal("status", program.await_end(), 0)
    for part in (frontend, backend, kwin):
        part.close()


@scenario()
def obeys_the_pointer_on_kwin(session):
    kwin = KWin(session, (1280, 800))
    program = session.start(**kwin.program_environment())
    await_active(program)
    left, top, *_ = kwin.await_window("Kestrel")["rect"]
    follows_pointer(kwin, (left + 600, top + 14), lambda x, y, width, height: [x + 40, y + 20, width, height])
    left, top, width, height = kwin.await_window("Kestrel")["rect"]
    follows_pointer(kwin, (left + width - 2, top + height - 2),
                    lambda x, y, width, height: [x, y, width + 40, height + 20])
    left, top, *_ = kwin.await_window("Kestrel")["rect"]
    kwin.move_to(left + 600, top + 14)
    for _ in range(2):
        kwin.press()
        kwin.release()
    wait_equal("place", lambda: kwin.await_window("Kestrel")["rect"], [0, 0, 1280, 800])
    expect_drawn(kwin, program)
    x, y = tree.middle(program.button("Add Audio"))
    kwin.move_to(x, y)
    kwin.press()
    kwin.release()
    program.window(FILES_PANEL[0])
    wait_equal("focus", lambda: program.focus().get_role(), Role.TEXT)
    kwin.key("Escape")
    program.await_no_window(FILES_PANEL[0])
    await_active(program)
    kwin.key("ctrl+q")
    expect_equal("status", program.await_end(), 0)
    kwin.close()


@scenario()
def drops_from_thunar_on_kwin(session):
    kwin = KWin(session, (1700, 900))
    folder = session.music / "first"
    make_files(folder)
    environment = kwin.program_environment()
    program = session.start(**environment)
    await_active(program)
    thunar = Helper(session, "thunar", ["thunar", str(folder)], **{**environment, "GDK_BACKEND": "wayland"})
    window = wait_for("active Thunar", lambda: next(
        (window for window in kwin.windows() if window["pid"] == thunar.pid and window["is_active"]), None))
    drag(kwin, select_all(kwin, window), drop_zone(program))
    expected = queued([os.path.join(os.fsencode(folder), file) for file in os.listdir(os.fsencode(folder))])
    wait_equal("rows", lambda: sorted(shown(program)), sorted(expected))
    names = program.names()
    expect_equal("the folder's second file", names[names.index("2.opus") + 1], "10.opus")
    program.await_text(f"{len(expected)} audio files · 0 complete")
    expect("nothing was moved", len(os.listdir(folder)) == 7)
    program.quit()
    for part in (thunar, kwin):
        part.close()
