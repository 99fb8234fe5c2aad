"""Mouse and keyboard for windows of GTK, whose keyboard focus is on a child that has no pid and no title."""

import contextlib

from Xlib import X, display

from driver import input, tree
from driver.waiting import wait_for

# Polls without a change of place, some 200 ms.
STEADY = 10


@contextlib.contextmanager
def _windows():
    """The root window, and functions for the window of a number and the first value of a property."""
    connection = display.Display()

    def value(window, name):
        found = window.get_full_property(connection.get_atom(name), X.AnyPropertyType)
        return found.value[0] if found and len(found.value) else None

    def window(number):
        return connection.create_resource_object("window", number) if number else None

    try:
        yield connection.screen().root, window, value
    finally:
        connection.close()


def active_pid():
    """The pid of the active window, or None."""
    with _windows() as (root, window, value):
        active = window(value(root, "_NET_ACTIVE_WINDOW"))
        return value(active, "_NET_WM_PID") if active else None


def active_window():
    """The number of the active window, or None."""
    with _windows() as (root, window, value):
        return value(root, "_NET_ACTIVE_WINDOW")


def rectangle(number):
    """The place of a window on the screen, without its frame: x, y, width, height."""
    with _windows() as (root, window, value):
        geometry = window(number).get_geometry()
        corner = root.translate_coords(window(number), 0, 0)
        return corner.x, corner.y, geometry.width, geometry.height


def parent_pid():
    """The pid of the window that the active one is transient for, or None."""
    with _windows() as (root, window, value):
        active = window(value(root, "_NET_ACTIVE_WINDOW"))
        parent = window(value(active, "WM_TRANSIENT_FOR")) if active else None
        return value(parent, "_NET_WM_PID") if parent else None


def await_active(pid):
    wait_for("active window", lambda: active_pid() == pid)


def await_place(node):
    """Waits until the node stays where it is; each question for its place is a turn of its program's event loop."""
    places = []

    def is_steady():
        places.append(tree.rectangle(node))
        return len(places) > STEADY and len(set(places[-STEADY:])) == 1

    wait_for("node that stays in place", is_steady)


def click(node, count=1):
    await_place(node)
    input.move_to(*tree.middle(node))
    input.xdotool("click", "--repeat", count, "--delay", 20, 1)


@contextlib.contextmanager
def held(modifier):
    """Holds a modifier key, such as "ctrl", down."""
    input.xdotool("keydown", modifier)
    try:
        yield
    finally:
        input.xdotool("keyup", modifier)
