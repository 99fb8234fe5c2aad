"""The window under other locales, on other screens and desktops."""

import pathlib
import subprocess

from driver import input, media, screen, tree
from driver.registry import scenario
from driver.session import QT_LOCALE_WARNING
from driver.tree import Role
from driver.waiting import Unmet, expect, expect_equal, wait_equal, wait_for

SMALLEST = (960, 640)
SIDEBAR_WIDTH = 310
LIGHT_WINDOW = (0xEF, 0xEF, 0xEF)
DARK_WINDOW = (34, 36, 41)
# The kdeglobals of a dark colour scheme.
DARK_COLORS = """
[Colors:Window]
BackgroundNormal=34,36,41
ForegroundNormal=240,240,240
[Colors:Button]
BackgroundNormal=49,54,59
ForegroundNormal=240,240,240
[Colors:View]
BackgroundNormal=27,30,32
BackgroundAlternate=35,38,41
ForegroundNormal=240,240,240
[Colors:Selection]
BackgroundNormal=61,174,233
ForegroundNormal=255,255,255
"""


def convert_a_track(session, program, name):
    """Adds a track and converts it; checks every text on the way."""
    track = media.make_track(session.music / f"{name}.opus", seconds=0.2)
    program.await_text("82%")
    program.await_text("Add OPUS, OGG, or OGA files")
    program.add_files(track)
    program.await_names([f"{name}.opus"])
    expect_equal("position", program.rows()[0].position, "1 of 1")
    program.await_text("1 audio file · 0 complete")
    program.choose_destination(session.output)
    program.press("Convert 1 File")
    program.await_states(["Complete"])
    program.await_text("1 audio file · 1 complete")
    codec, _, seconds = media.describe(session.output / f"{name}_converted.mp3")
    expect_equal("codec", codec, "mp3")
    expect(f"it is as long as the track, not {seconds} s", 0.15 < seconds < 0.4)


def start_with_locale(session, locale):
    """Starts the program with one of the locales compiled for the tests."""
    program = session.start(LC_ALL=locale, LOCPATH=session.options.locales)
    program.window()
    maps = pathlib.Path(f"/proc/{program.pid}/maps").read_text()
    expect(f"the program uses {locale}", f"{session.options.locales}/{locale}/LC_NUMERIC" in maps)
    return program


def ask_xdotool(*arguments):
    return subprocess.run(["xdotool", *arguments], check=True, timeout=20, stdout=subprocess.PIPE,
                          text=True).stdout.splitlines()


def screen_rectangle():
    """The window's X11 geometry in device pixels: x, y, width, height."""
    window = ask_xdotool("search", "--sync", "--onlyvisible", "--name", "^Kestrel$")[-1]
    lines = ask_xdotool("getwindowgeometry", "--shell", window)
    values = dict(line.split("=") for line in lines)
    return tuple(int(values[key]) for key in ("X", "Y", "WIDTH", "HEIGHT"))


def expect_inside(what, inner, outer):
    x, y, width, height = inner
    left, top, whole_width, whole_height = outer
    expect(f"{what} {inner} lies within {outer}",
           left <= x and top <= y and x + width <= left + whole_width and y + height <= top + whole_height)


def expect_nothing_clipped(program):
    """Every visible node lies within the window."""
    window = program.window()
    count = 0
    for node in tree.descendants(window):
        rectangle = tree.rectangle(node)
        if rectangle[2] > 0 and rectangle[3] > 0:
            count += 1
            expect_inside(f'{node.get_role_name()} "{tree.name_of(node)}"', rectangle,
                          tree.rectangle(window))
    expect(f"all controls were checked, not {count}", count > 30)


def expect_window_size(factor, display_size):
    rectangle = screen_rectangle()
    expect_inside("the window", rectangle, (0, 0, *display_size))
    for size, smallest in zip(rectangle[2:], SMALLEST):
        expect(f"the window has its smallest size at least, not {rectangle}", size >= factor * smallest)


def click_format(program, name):
    """Chooses a format by mouse. AT-SPI may use device-independent pixels; the mouse uses device pixels."""
    left, top, width, _ = screen_rectangle()
    logical_left, logical_top, logical_width, _ = tree.rectangle(program.window())
    ratio = width / logical_width
    x, y = tree.middle(program.button(name))
    input.move_to(left + round((x - logical_left) * ratio), top + round((y - logical_top) * ratio))
    input.xdotool("click", 1)
    program.await_checked(name)


def expect_sidebar(factor):
    """The sidebar is dark up to its last pixel, followed by a separator line and the window background."""
    x, y, _, height = screen_rectangle()
    edge = x + factor * SIDEBAR_WIDTH
    for row in screen.pixels((edge - 4, y + height // 2, 4 + factor + 4, 100))[::10]:
        expect(f"the sidebar is dark, not {row[:4]}", all(max(pixel) < 60 for pixel in row[:4]))
        expect_equal("colours beside the line", len(set(row[4 + factor:])), 1)
        expect("the line differs from the background", row[3 + factor] != row[-1])


def window_background():
    """The colour of the window between sidebar and drop zone."""
    x, y, _, height = screen_rectangle()
    return screen.pixels((x + SIDEBAR_WIDTH + 8, y + height // 2, 1, 1))[0][0]


def brightness_range(node):
    """The brightness of the darkest and the lightest pixel of a node."""
    pixels = [sum(pixel) // 3 for row in screen.pixels(tree.rectangle(node)) for pixel in row]
    return min(pixels), max(pixels)


def expect_colors(program, background, is_dark):
    wait_equal("the window background", window_background, background)
    expect_sidebar(1)
    title = wait_for("title", lambda: tree.find(program.find(Role.PANEL, "Conversion Queue"), Role.LABEL))
    darkest, lightest = brightness_range(title)
    if is_dark:
        expect(f"light text, not up to {lightest}", lightest > 200)
    else:
        expect(f"dark text, not down to {darkest}", darkest < 60)
    # The sidebar's text is light on every desktop.
    subtitle = program.find(Role.LABEL, "Kestrel")
    expect("light text in the sidebar", brightness_range(subtitle)[1] > 200)


@scenario()
def is_used_under_the_plain_c_locale(session):
    session.ignored_prefixes += QT_LOCALE_WARNING
    program = session.start(LC_ALL="C")
    convert_a_track(session, program, "Ö")
    program.quit()


@scenario()
def is_used_under_a_german_locale(session):
    program = start_with_locale(session, "de_DE.UTF-8")
    convert_a_track(session, program, "Übung")
    program.quit()


@scenario()
def is_used_under_an_arabic_locale(session):
    program = start_with_locale(session, "ar_EG.UTF-8")
    convert_a_track(session, program, "أغنية")
    program.quit()


@scenario()
def shows_progress_where_numbers_have_a_decimal_comma(session):
    session.replace_ffmpeg()
    gate = session.folder / "gate"
    source = session.script(
        "song.opus",
        "probe err   Duration: 00:00:00.80, start: 0.000000\\n",
        "convert out out_time_ms=200000\\nprogress=continue\\n",
        f"convert wait-for {gate}",
        "convert write-output done",
    )
    program = start_with_locale(session, "de_DE.UTF-8")
    program.convert(session.output, source)
    wait_equal("progress", program.progress, [0.25, 0.25])
    gate.touch()
    program.await_states(["Complete"])
    program.quit()


def use_at_scale(session, scale, display_size):
    program = session.start(QT_SCALE_FACTOR=str(scale))
    program.window()
    expect_window_size(scale, display_size)
    expect_sidebar(scale)
    expect_nothing_clipped(program)
    click_format(program, "WAV")
    click_format(program, "MP3")
    convert_a_track(session, program, "song")
    expect_nothing_clipped(program)
    program.quit()


@scenario()
def shows_the_whole_window_at_scale_one(session):
    use_at_scale(session, 1, (1400, 900))


@scenario(display_size="2800x1800")
def shows_the_whole_window_at_scale_two(session):
    use_at_scale(session, 2, (2800, 1800))


@scenario()
def is_light_without_a_desktop(session):
    program = session.start()
    program.window()
    expect_colors(program, LIGHT_WINDOW, is_dark=False)
    convert_a_track(session, program, "song")
    program.quit()


@scenario()
def is_dark_on_a_dark_desktop(session):
    desktop = session.folder / "desktop"
    desktop.mkdir()
    (desktop / "kdeglobals").write_text(DARK_COLORS)
    program = session.start(XDG_CURRENT_DESKTOP="KDE", KDE_SESSION_VERSION="5",
                            XDG_CONFIG_DIRS=str(desktop))
    program.window()
    expect_colors(program, DARK_WINDOW, is_dark=True)
    convert_a_track(session, program, "song")
    program.quit()


@scenario()
def moves_the_alert_by_its_background(session):
    """It has no caption to drag it by."""
    program = session.start()
    program.add_files(media.make_track(session.music / "song.opus"))
    program.press("Convert 1 File")
    x, y, width, height = tree.rectangle(program.await_alert("Choose an output folder first."))
    def is_moved():
        return tree.rectangle(program.alert())[:2] not in [(x, y), (0, 0)]

    def drag():
        # A window manager that learns of the drag after its end does not move the window.
        input.drag((x + 60, y + height - 30), (x - 100, y - 60), between=[(x, y)])
        input.release()
        try:
            return wait_for("alert in another place", is_moved, 3)
        except Unmet:
            return False

    wait_for("drag of the alert", drag)
    expect_equal("size", tree.rectangle(program.alert())[2:], (width, height))
    input.click(tree.find(program.alert(), tree.BUTTONS, "OK"))
    program.await_no_alert()
    program.quit()
