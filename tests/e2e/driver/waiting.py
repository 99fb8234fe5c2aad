"""Waiting for what a program does in its own time."""

import time

from gi.repository import GLib

# Far more than anything takes, so that only what never comes runs out of it.
SECONDS = 30


class Unmet(Exception):
    """A condition that did not come to pass, with what was expected and what was there instead."""


def wait_for(what, probe, seconds=SECONDS):
    """The first true result of the probe; asks again until then, within the time."""
    deadline = time.monotonic() + seconds
    while True:
        while GLib.MainContext.default().iteration(False):
            pass
        try:
            result = probe()
        except GLib.Error:  # An object that went away while it was looked at.
            result = None
        if result:
            return result
        if time.monotonic() > deadline:
            raise Unmet(f"{what}: not within {seconds} s")
        time.sleep(0.02)


def wait_equal(what, probe, expected, seconds=SECONDS):
    """Waits until the probe gives what is expected; otherwise says what it gave last."""
    last = [None]

    def reached():
        last[0] = probe()
        return last[0] == expected

    try:
        wait_for(what, reached, seconds)
    except Unmet as unmet:
        raise Unmet(f"{unmet}; expected {expected!r}, got {last[0]!r}") from None


def expect_equal(what, actual, expected):
    if actual != expected:
        raise Unmet(f"{what}: expected {expected!r}, got {actual!r}")


def expect(what, is_met):
    if not is_met:
        raise Unmet(what)
