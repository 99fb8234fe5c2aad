"""The mouse and the keyboard."""

import functools
import subprocess

from Xlib import X, display, error
from Xlib.ext import xtest

from driver import tree
from driver.waiting import wait_for


def xdotool(*arguments):
    subprocess.run(["xdotool", *map(str, arguments)], check=True, timeout=20)


@functools.cache
def _display():
    return display.Display()


def _property(window, name):
    value = window.get_full_property(_display().get_atom(name), X.AnyPropertyType)
    return value.value if value else None


def focused_window():
    """The pid and title of the window with the keyboard focus; None if there is none, or while the window
    manager moves it."""
    active = _property(_display().screen().root, "_NET_ACTIVE_WINDOW")
    focused = _display().get_input_focus().focus
    if active is None or isinstance(focused, int) or active[0] != focused.id:
        return None
    try:
        owner, title = _property(focused, "_NET_WM_PID"), _property(focused, "_NET_WM_NAME")
    except error.BadWindow:  # It was just destroyed.
        return None
    return (owner[0], title.decode()) if owner and title else None


def await_keyboard_focus(pid=None):
    """Waits until a window, of `pid` if given, has the keyboard focus."""

    def has_focus():
        window = focused_window()
        return window is not None and pid in (None, window[0])

    wait_for("window with the keyboard focus", has_focus)


def key(*combinations):
    """Presses keys one after the other, such as "ctrl+o"."""
    xdotool("key", "--clearmodifiers", "--delay", 5, *combinations)


def type_text(text):
    xdotool("type", "--delay", 2, "--", text)


def move_to(x, y):
    # As a mouse does it: motion events are queued behind a click that the window manager has grabbed.
    # Warping the pointer would move that click.
    xtest.fake_input(_display(), X.MotionNotify, x=x, y=y)
    _display().sync()


def click(node, button=1):
    await_keyboard_focus()
    move_to(*tree.middle(node))
    xdotool("click", button)


def drag(start, end, between=()):
    """Presses at `start` and moves to `end` by way of `between`; the button stays down."""
    move_to(*start)
    xdotool("mousedown", 1)
    # Small steps past the drag threshold.
    x, y = start
    for step in (4, 8, 12, 16):
        move_to(x + step, y + step)
    for point in (*between, end):
        move_to(*point)


def release():
    xdotool("mouseup", 1)
