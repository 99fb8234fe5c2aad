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


def keyboard_window():
    """The process and the title of the window that has the keyboard; None while there is none, or the window
    manager is about to move it."""
    active = _property(_display().screen().root, "_NET_ACTIVE_WINDOW")
    focused = _display().get_input_focus().focus
    if active is None or isinstance(focused, int) or active[0] != focused.id:
        return None
    try:
        owner, title = _property(focused, "_NET_WM_PID"), _property(focused, "_NET_WM_NAME")
    except error.BadWindow:  # It has just gone.
        return None
    return (owner[0], title.decode()) if owner and title else None


def await_keyboard(pid=None):
    """Waits until a window has the keyboard, one of that process if one is named."""

    def is_there():
        window = keyboard_window()
        return window is not None and pid in (None, window[0])

    wait_for("window with the keyboard", is_there)


def key(*combinations):
    """Presses keys one after the other, such as "ctrl+o"."""
    xdotool("key", "--clearmodifiers", "--delay", 5, *combinations)


def type_text(text):
    xdotool("type", "--delay", 2, "--", text)


def move_to(x, y):
    # As a mouse does it: while the window manager looks at a click, what comes after it waits too. To
    # put the pointer somewhere would move that click.
    xtest.fake_input(_display(), X.MotionNotify, x=x, y=y)
    _display().sync()


def click(node, button=1):
    await_keyboard()
    move_to(*tree.middle(node))
    xdotool("click", button)


def drag(start, end, between=()):
    """Presses at a point, moves to another by way of others, and stays there with the button down."""
    move_to(*start)
    xdotool("mousedown", 1)
    # The first steps are the way after which a press becomes a drag.
    x, y = start
    for step in (4, 8, 12, 16):
        move_to(x + step, y + step)
    for point in (*between, end):
        move_to(*point)


def release():
    xdotool("mouseup", 1)
