"""Started by programs that leave it less than it should have, or more."""

import os
import pty

from driver import media
from driver.registry import scenario
from driver.waiting import expect_equal


def expect_to_convert(session, program):
    """One file that succeeds, and one that fails with words."""
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
    ours, theirs = pty.openpty()
    try:
        program = session.start_on_terminal(theirs)
        program.window()
        # Keys that are typed there do not reach ffmpeg, and job control does not stop it.
        expect_equal("standard input", streams(program)[0], "/dev/null")
        expect_to_convert(session, program)
        program.quit()
    finally:
        os.close(ours)
        os.close(theirs)


@scenario()
def converts_when_started_without_standard_streams(session):
    program = session.start_from_shell("exec <&- >&- 2>&-")
    program.window()
    expect_equal("standard streams", streams(program), ["/dev/null"] * 3)
    expect_to_convert(session, program)
    program.quit()


@scenario()
def converts_when_started_where_the_end_of_children_is_ignored(session):
    program = session.start_from_shell("trap '' CHLD")
    expect_to_convert(session, program)
    program.quit()
