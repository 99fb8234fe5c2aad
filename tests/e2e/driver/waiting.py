"""Polls asynchronous conditions, with a timeout."""

import time

from gi.repository import GLib

# In seconds; far more than anything takes, so that only what never happens times out.
TIMEOUT = 30


class Unmet(Exception):
    """Raised when a condition is not met, with the expected and the actual value."""


def wait_for(what, probe, seconds=TIMEOUT):
    """Polls the probe and returns its first true result. Runs the GLib main context; raises Unmet on timeout."""
    deadline = time.monotonic() + seconds
    while True:
        while GLib.MainContext.default().iteration(False):
            pass
        try:
            result = probe()
        except GLib.Error:  # The object was destroyed during the query.
            result = None
        if result:
            return result
        if time.monotonic() > deadline:
            raise Unmet(f"{what}: not within {seconds} s")
        time.sleep(0.02)


def wait_equal(what, probe, expected, seconds=TIMEOUT):
    """Waits until the probe returns `expected`; Unmet has the last value."""
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
