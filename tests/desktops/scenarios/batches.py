"""What real parts of a desktop notice of a batch."""

from driver.registry import scenario
from driver.waiting import expect_equal, wait_equal

from parts import portal
from parts.power import Logind, SessionManager

REASON = "Converting audio files"
# What logind holds during a batch: what, who, why and mode.
HELD = [("sleep:idle", "Kestrel", REASON, "block")]


def start_batch(session, program, name="song.opus"):
    """Starts a batch of one file that waits; returns the file whose creation lets it end."""
    end = session.folder / f"end-of-{name}"
    source = session.script(name, f"convert wait-for {end}", "convert write-output done")
    program.convert(session.output, source)
    return end


def start_batch_with_portal(session, program, start_parts):
    """The same, with parts that start before the batch but after the program's own panels."""
    end = session.folder / "end"
    program.add_files(session.script("song.opus", f"convert wait-for {end}", "convert write-output done"))
    program.choose_destination(session.output)
    parts = start_parts()
    program.press("Convert 1 File")
    return end, parts


@scenario()
def keeps_the_machine_awake_by_logind(session):
    """Without a portal; given back at the end, on Cancel, by Quit and by a crash."""
    session.replace_ffmpeg()
    logind = Logind(session)
    program = session.start(**logind.environment)
    expect_equal("before the batch", logind.inhibitors(), [])
    end = start_batch(session, program)
    wait_equal("during the batch", logind.inhibitors, HELD)
    end.touch()
    program.await_states(["Complete"])
    wait_equal("after the batch", logind.inhibitors, [])
    program.quit()

    def cancel(running):
        running.press("Cancel")

    def quit_program(running):
        running.ask_to_quit()
        expect_equal("status", running.await_end(), 0)

    def crash(running):
        running.kill()

    for stop in (cancel, quit_program, crash):
        program = session.start(**logind.environment)
        end = start_batch(session, program, f"{stop.__name__}.opus")
        wait_equal(f"before {stop.__name__}", logind.inhibitors, HELD)
        stop(program)
        wait_equal(f"after {stop.__name__}", logind.inhibitors, [])
        end.touch()
        if stop is cancel:
            program.quit()
    logind.close()


@scenario()
def keeps_the_machine_awake_by_the_portal(session):
    """The portal's GTK backend hands it on to GNOME's session manager."""
    session.replace_ffmpeg()
    logind = Logind(session)
    program = session.start(**logind.environment)
    end, parts = start_batch_with_portal(session, program, lambda: [
        SessionManager(session), portal.start_backend(session), portal.start_frontend(session)])
    inhibit = f'Inhibit "" 0 "{REASON}" 4'
    wait_equal("calls", parts[0].calls, [inhibit])
    expect_equal("inhibitors of logind", logind.inhibitors(), [])
    end.touch()
    program.await_states(["Complete"])
    wait_equal("calls", parts[0].calls, [inhibit, "Uninhibit 7"])
    program.quit()
    for part in (*reversed(parts), logind):
        part.close()


@scenario()
def keeps_the_machine_awake_where_the_portal_cannot(session):
    """Without GNOME's session manager, the portal's GTK backend refuses all but idleness."""
    session.replace_ffmpeg()
    logind = Logind(session)
    program = session.start(**logind.environment)
    end, parts = start_batch_with_portal(session, program, lambda: [
        portal.start_backend(session), portal.start_frontend(session)])
    wait_equal("inhibitors of logind", logind.inhibitors, HELD)
    end.touch()
    program.await_states(["Complete"])
    wait_equal("after the batch", logind.inhibitors, [])
    program.quit()
    for part in (*reversed(parts), logind):
        part.close()
