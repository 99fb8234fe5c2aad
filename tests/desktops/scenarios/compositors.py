"""The window on real Wayland compositors, by keyboard alone."""

import functools

from driver import media, screen, tree
from driver.program import DESTINATION_PANEL, FILES_PANEL, FOLDERS_PANEL
from driver.registry import scenario
from driver.tree import Role, State
from driver.waiting import expect, expect_equal, wait_equal, wait_for

from parts import portal
from parts.wayland import Mutter, Sway

# In logical pixels.
OUTPUT = (1100, 750)
SIDEBAR_WIDTH = 310


def focused_name(program):
    focus = program.focus()
    return tree.name_of(focus) if focus else None


def tab_to(compositor, program, name):
    """Presses Tab until the control of this name has the focus; returns the names on the way."""
    names = [focused_name(program)]
    while names[-1] != name and len(names) < 30:
        before = program.focus()
        compositor.key("Tab")
        wait_for("focus that moves", lambda: program.focus() not in (None, before))
        names.append(focused_name(program))
    expect_equal("focus", names[-1], name)
    return names


def fill_panel(sway, program, panel, path):
    title, _ = panel
    program.window(title)
    sway.await_window(title)
    wait_equal("focus", lambda: program.focus().get_role(), Role.TEXT)
    sway.key("ctrl+a")
    sway.type_text(str(path))
    field = program.focus()
    wait_equal("field", lambda: tree.text_of(field), str(path))
    sway.key("Return")
    program.await_no_window(title)
    sway.await_window("Kestrel")


def await_active(program):
    """Waits until the window knows that it has the keyboard, which only a mapped window gets."""
    wait_for("active window", lambda: tree.has_state(program.window(), State.ACTIVE))


def expect_drawn(compositor, program, place=None):
    """Checks the screen at parts of the window, each of a colour of its own; its place is the whole screen unless
    given."""
    left, top, window_width, window_height = place or (0, 0, *compositor.size)
    width, height, pixel = compositor.screenshot()
    expect_equal("size of the screen", (width, height), compositor.pixels)

    def at(x, y):
        return pixel(min(round((left + x) * compositor.scale), width - 1),
                     min(round((top + y) * compositor.scale), height - 1))

    def is_dark(color):
        return max(color) < 60

    def is_light(color):
        return min(color) > 220

    right, bottom = window_width - 4, window_height - 4
    for place in ((4, bottom), (SIDEBAR_WIDTH - 6, 4), (SIDEBAR_WIDTH - 6, bottom)):
        expect(f"the sidebar at {place} is dark, not {at(*place)}", is_dark(at(*place)))
    for place in ((right, bottom), (SIDEBAR_WIDTH + 10, bottom), (SIDEBAR_WIDTH + 10, 10)):
        expect(f"the queue panel at {place} is light, not {at(*place)}", is_light(at(*place)))
    button = program.button("Add Audio")
    # Qt gives positions in the window, as a Wayland client knows no other.
    x, y, _, button_height = tree.rectangle(button)
    inside = (x + 8, y + button_height // 2)
    expect(f"the button at {inside} is purple, not {at(*inside)}", screen.is_purple(at(*inside)))


def works_on_sway(session, scale):
    sway = Sway(session, scale, OUTPUT)
    album = session.music / "album"
    media.make_track(album / "1.opus", seconds=0.2)
    (album / "2.opus").symlink_to("1.opus")
    program = session.start(**sway.program_environment())
    program.window()
    window = sway.await_window("Kestrel")
    expect_equal("pid", window["pid"], program.pid)
    expect_equal("size", (window["rect"]["width"], window["rect"]["height"]), OUTPUT)
    wait_equal("focus", lambda: focused_name(program), "MP3")
    expect_drawn(sway, program)

    names = tab_to(sway, program, "Choose Folder")
    expect_equal("way of the focus", names, [
        "MP3", "AIFF", "WAV", "Quality", "Folder", "Add Audio", "Choose Audio", "Choose Folder"])
    sway.key("ctrl+shift+o")
    fill_panel(sway, program, FOLDERS_PANEL, album)
    program.await_names(["1.opus", "2.opus"])
    tab_to(sway, program, "Save to Choose destination…")
    sway.key("Return")
    fill_panel(sway, program, DESTINATION_PANEL, session.output)
    tab_to(sway, program, "Convert 2 Files")
    sway.key("Return")
    program.await_states(["Complete", "Complete"])
    expect_equal("files made", sorted(file.name for file in session.output.iterdir()),
                 ["1_converted.mp3", "2_converted.mp3"])
    expect_drawn(sway, program)
    sway.key("ctrl+q")
    expect_equal("status", program.await_end(), 0)
    sway.close()


for scale in (1, 1.5, 2):
    scenario(name=f"works-on-sway-at-scale-{scale}")(functools.partial(works_on_sway, scale=scale))


@scenario()
def shows_the_alert_on_sway(session):
    sway = Sway(session, 1, OUTPUT)
    media.make_track(session.music / "song.opus", seconds=0.2)
    program = session.start(**sway.program_environment())
    program.window()
    sway.await_window("Kestrel")
    sway.key("ctrl+o")
    fill_panel(sway, program, FILES_PANEL, session.music / "song.opus")
    program.await_names(["song.opus"])
    tab_to(sway, program, "Convert 1 File")
    sway.key("Return")
    program.await_alert("Choose an output folder first.")
    sway.key("Return")
    program.await_no_alert()
    sway.key("ctrl+q")
    expect_equal("status", program.await_end(), 0)
    sway.close()


@scenario()
def opens_the_portal_panel_over_the_window_on_sway(session):
    """Sway floats a window that has a parent, and tiles any other beside it."""
    sway = Sway(session, 1, OUTPUT)
    environment = sway.program_environment()
    backend = portal.start_backend(session, **{**environment, "GDK_BACKEND": "wayland"})
    frontend = portal.start_frontend(session)
    program = session.start(**environment)
    program.window()
    place = sway.await_window("Kestrel")["rect"]
    sway.key("ctrl+o")
    panel = portal.Panel(backend, FILES_PANEL[0])
    expect_equal("the panel is", sway.await_window(FILES_PANEL[0])["type"], "floating_con")
    window = next(window for window in sway.windows() if window["name"] == "Kestrel")
    expect_equal("place of the window", window["rect"], place)
    panel.cancel()
    sway.await_window("Kestrel")
    sway.key("ctrl+q")
    expect_equal("status", program.await_end(), 0)
    for part in (frontend, backend, sway):
        part.close()


def use_by_keyboard(compositor, session, program):
    """Adds a file, starts a batch without an output folder and with one, and quits."""
    media.make_track(session.music / "song.opus", seconds=0.2)
    await_active(program)
    wait_equal("focus", lambda: focused_name(program), "MP3")
    names = tab_to(compositor, program, "Add Audio")
    expect_equal("way of the focus", names, ["MP3", "AIFF", "WAV", "Quality", "Folder", "Add Audio"])
    compositor.key("space")
    program.fill_panel(FILES_PANEL, session.music / "song.opus")
    program.await_names(["song.opus"])
    await_active(program)
    tab_to(compositor, program, "Convert 1 File")
    compositor.key("Return")
    program.await_alert("Choose an output folder first.")
    compositor.key("Return")
    program.await_no_alert()
    program.choose_destination(session.output)
    await_active(program)
    tab_to(compositor, program, "Convert 1 File")
    compositor.key("Return")
    program.await_states(["Complete"])
    compositor.key("ctrl+q")
    expect_equal("status", program.await_end(), 0)


@scenario()
def works_on_mutter(session):
    mutter = Mutter(session, (1280, 800))
    program = session.start(**mutter.program_environment())
    await_active(program)
    *_, width, height = tree.rectangle(program.window())
    expect(f"the window has {width} x {height}", 960 <= width <= 1280 and 640 <= height <= 800)
    use_by_keyboard(mutter, session, program)
    mutter.close()
