"""Smoke scenarios on Wayland, through AT-SPI, as there is no pointer."""

from driver import media, tree
from driver.compositor import ENVIRONMENT, Compositor
from driver.program import FILES_PANEL
from driver.registry import scenario
from driver.waiting import expect, expect_equal


@scenario()
def converts_on_wayland(session):
    tracks = [media.make_track(session.music / f"{number}.opus") for number in (1, 2)]
    compositor = Compositor(session)
    program = session.start(**ENVIRONMENT)
    program.await_text("Drop Opus audio or folders here")
    *_, width, height = tree.rectangle(program.window())
    expect(f"the window has {width} x {height}", width >= 960 and height >= 640)
    program.command("Add Audio…")
    program.fill_panel(FILES_PANEL, *tracks)
    program.await_names(["1.opus", "2.opus"])
    program.choose_destination(session.output)
    program.press("Convert 2 Files")
    program.await_states(["Complete", "Complete"])
    expect_equal("codec", media.describe(session.output / "2_converted.mp3")[0], "mp3")
    program.quit()
    compositor.kill()


@scenario()
def shows_and_closes_the_alert_on_wayland(session):
    media.make_track(session.music / "song.opus")
    compositor = Compositor(session)
    program = session.start(**ENVIRONMENT)
    program.add_files(session.music / "song.opus")
    program.press("Convert 1 File")
    alert = program.await_alert("Choose an output folder first.", has_keyboard=False)
    tree.act(tree.find(alert, tree.BUTTONS, "OK"), "Press")
    program.await_no_alert()
    program.press("Close")
    expect_equal("status", program.await_end(), 0)
    compositor.kill()
