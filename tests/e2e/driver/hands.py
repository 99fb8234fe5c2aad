"""The mouse and the keyboard."""

import subprocess

from driver import tree


def xdotool(*arguments):
    subprocess.run(["xdotool", *map(str, arguments)], check=True, timeout=20)


def key(*combinations):
    """Presses keys one after the other, such as "ctrl+o"."""
    xdotool("key", "--clearmodifiers", "--delay", 5, *combinations)


def type_text(text):
    xdotool("type", "--delay", 2, "--", text)


def move_to(x, y):
    xdotool("mousemove", x, y)


def click(node, button=1):
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
