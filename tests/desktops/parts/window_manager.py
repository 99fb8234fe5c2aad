"""Xfwm4 instead of the display's own window manager, and the places of windows."""

from Xlib import X, display, error

from driver import input
from driver.waiting import wait_for

from parts import pointer
from parts.helper import Helper

# More than any frame is thick.
FRAME = 60


def _manager():
    """The name of the running window manager, or None."""
    connection = display.Display()
    try:
        name = connection.get_atom("_NET_SUPPORTING_WM_CHECK")
        found = connection.screen().root.get_full_property(name, X.AnyPropertyType)
        if not found:
            return None
        window = connection.create_resource_object("window", found.value[0])
        title = window.get_full_property(connection.get_atom("_NET_WM_NAME"), X.AnyPropertyType)
        return title.value.decode() if title else None
    except error.BadWindow:  # The old one is just leaving.
        return None
    finally:
        connection.close()


def start_xfwm4(session):
    manager = Helper(session, "xfwm4", ["xfwm4", "--replace", "--compositor=off"])
    wait_for("window manager", lambda: _manager() == "Xfwm4")
    return manager


def move(window, x, y, *size):
    """Moves a window, given by its number, so that its frame is there, and resizes it."""
    input.xdotool("windowmove", window, x, y)
    if size:
        input.xdotool("windowsize", window, *size)

    def is_there():
        left, top, *rest = pointer.rectangle(window)
        return 0 <= left - x < FRAME and 0 <= top - y < FRAME and size in ((), tuple(rest))

    wait_for("moved window", is_there)
