"""Unusual process environments: terminal, closed standard streams, ignored SIGCHLD, no display."""

import os
import pty
import subprocess

from driver import media
from driver.program import environment_with
from driver.registry import scenario
from driver.waiting import TIMEOUT, expect, expect_equal


def expect_to_convert(session, program):
    """Converts a good file, and a bad one that fails."""
    good = media.make_track(session.music / "good.opus")
    bad = session.music / "bad.opus"
    bad.write_text("no audio")
    program.convert(session.output, good, bad)
    program.await_states(["Failed", "Complete"])
    expect_equal("codec", media.describe(session.output / "good_converted.mp3")[0], "mp3")


def streams(program):
    return [os.readlink(f"/proc/{program.pid}/fd/{stream}") for stream in (0, 1, 2)]


@scenario()
def converts_when_started_from_a_terminal(session):
    master, terminal = pty.openpty()
    try:
        program = session.start_on_terminal(terminal)
        program.window()
        # ffmpeg reads no keys from the terminal, and job control does not stop it.
        expect_equal("standard input", streams(program)[0], "/dev/null")
        expect_to_convert(session, program)
        program.quit()
    finally:
        os.close(master)
        os.close(terminal)


@scenario()
def converts_when_started_without_standard_streams(session):
    program = session.start_from_shell("exec <&- >&- 2>&-")
    program.window()
    expect_equal("standard streams", streams(program), ["/dev/null"] * 3)
    expect_to_convert(session, program)
    program.quit()


@scenario()
def converts_when_started_with_sigchld_ignored(session):
    program = session.start_from_shell("trap '' CHLD")
    expect_to_convert(session, program)
    program.quit()


def end_without_display(session, **environment):
    """Runs the program without a usable display; returns its stdout and stderr."""
    no_display = {"DISPLAY": None, "WAYLAND_DISPLAY": None, "XDG_SESSION_TYPE": None, "QT_QPA_PLATFORM": None,
                  "HOME": str(session.home)}
    done = subprocess.run([session.options.program], env=environment_with({**no_display, **environment}),
                          stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, stderr=subprocess.STDOUT,
                          timeout=TIMEOUT, check=False)
    # It exits; it is not killed by a signal with a core dump.
    expect_equal(f"status with {environment}", done.returncode, 1)
    return done.stdout.decode()


@scenario()
def says_in_one_line_that_there_is_no_display(session):
    expect_equal("stderr without a display", end_without_display(session),
                 "kestrel: no display: neither WAYLAND_DISPLAY nor DISPLAY is set\n")
    # Displays without a server, and an unknown platform plugin.
    for environment, named in (
        ({"DISPLAY": ":65000"}, ":65000"),
        ({"WAYLAND_DISPLAY": "nowhere", "XDG_SESSION_TYPE": "wayland"}, "wl_display"),
        ({"QT_QPA_PLATFORM": "nowhere"}, '"nowhere"'),
    ):
        written = end_without_display(session, **environment)
        expect(f"one line with {environment}",
               written.startswith("kestrel: cannot open the display: ") and named in written
               and written.count("\n") == 1 and written.endswith("\n"))
