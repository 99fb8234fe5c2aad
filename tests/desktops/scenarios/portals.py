"""The file chooser of the real desktop portal, with its GTK backend."""

import os

from driver import media, tree
from driver.program import DESTINATION_PANEL, FILES_PANEL, FOLDERS_PANEL
from driver.registry import scenario
from driver.waiting import expect, expect_equal, wait_equal, wait_for

from parts import portal, pointer
from parts.idleness import await_idle


def touch(*paths):
    for path in paths:
        path.parent.mkdir(parents=True, exist_ok=True)
        path.touch()


def start(session):
    """Starts both portals and the program."""
    backend = portal.start_backend(session)
    frontend = portal.start_frontend(session)
    program = session.start(**portal.with_music_folder(session))
    program.window()
    return program, backend, frontend


def end(program, *portals):
    program.quit()
    for process in portals:
        process.close()


@scenario()
def chooses_files_in_the_portal(session):
    touch(*(session.music / name for name in ("b.opus", "a #1 50%.OGG", "c.oga", "notes.txt")))
    program, *portals = start(session)
    program.key("ctrl+o")
    panel = portal.Panel(portals[0], FILES_PANEL[0])
    expect_equal("window below the panel", panel.parent_pid(), program.pid)
    panel.open_music_folder("a #1 50%.OGG", "b.opus", "c.oga")
    expect("only supported files are offered", "notes.txt" not in panel.names())
    panel.select("c.oga", "a #1 50%.OGG")
    panel.press(FILES_PANEL[1])
    program.await_names(["a #1 50%.OGG", "c.oga"])
    expect_equal("folders", [row.folder for row in program.rows()], ["music", "music"])
    end(program, *portals)


@scenario()
def chooses_a_file_whose_name_is_not_utf8_in_the_portal(session):
    """GTK matches the patterns of a filter with the names as it shows them."""
    media.make_track(os.fsencode(session.music) + b"/caf\xe9.opus", seconds=0.2)
    program, *portals = start(session)
    program.key("ctrl+o")
    panel = portal.Panel(portals[0], FILES_PANEL[0])
    panel.open_music_folder()
    panel.select(wait_for("file", lambda: next((name for name in panel.names() if name.startswith("caf")), None)))
    panel.press(FILES_PANEL[1])
    program.await_names(["caf\ufffd.opus"])
    end(program, *portals)


@scenario()
def chooses_a_folder_whose_name_is_not_utf8_in_the_portal(session):
    """The panel for files would not show such files: GTK matches their patterns with the names that it shows."""
    folder = os.fsencode(session.music) + b"/old \xe4lbum"
    media.make_track(folder + b"/caf\xe9.opus", seconds=0.2)
    program, *portals = start(session)
    program.key("ctrl+shift+o")
    panel = portal.Panel(portals[0], FOLDERS_PANEL[0])
    panel.open_music_folder()
    panel.select(wait_for("folder", lambda: next((name for name in panel.names() if name.startswith("old ")), None)))
    panel.press(FOLDERS_PANEL[1])
    program.await_names(["caf\ufffd.opus"])
    expect_equal("folder", program.rows()[0].folder, "old \ufffdlbum")
    end(program, *portals)


@scenario()
def chooses_several_folders_in_the_portal(session):
    touch(*(session.music / name for name in ("album/2.opus", "album/10.opus", "live/1.ogg", "other/3.opus")))
    program, *portals = start(session)
    program.key("ctrl+shift+o")
    panel = portal.Panel(portals[0], FOLDERS_PANEL[0])
    panel.open_music_folder("album", "live", "other")
    panel.select("live", "album")
    panel.press(FOLDERS_PANEL[1])
    program.await_names(["1.ogg", "2.opus", "10.opus"])
    expect_equal("folders", [row.folder for row in program.rows()], ["live", "album", "album"])
    end(program, *portals)


@scenario()
def makes_the_output_folder_in_the_portal(session):
    media.make_track(session.music / "song.opus", seconds=0.2)
    program, *portals = start(session)
    program.key("ctrl+o")
    panel = portal.Panel(portals[0], FILES_PANEL[0])
    panel.open_music_folder("song.opus")
    panel.select("song.opus")
    panel.press(FILES_PANEL[1])
    program.await_names(["song.opus"])
    tree.act(program.destination_button(), "Press")
    panel = portal.Panel(portals[0], DESTINATION_PANEL[0])
    panel.open_music_folder()
    panel.make_folder("made here")
    panel.press(DESTINATION_PANEL[1])
    made = session.music / "made here"
    wait_equal("destination", lambda: tree.name_of(program.destination_button()), f"Save to {made}")
    program.press("Convert 1 File")
    program.await_states(["Complete"])
    expect_equal("files made", [file.name for file in made.iterdir()], ["song_converted.mp3"])
    end(program, *portals)


@scenario()
def keeps_everything_after_a_cancelled_portal_panel(session):
    touch(session.music / "song.opus")
    program, *portals = start(session)
    for combination, (title, _) in (("ctrl+o", FILES_PANEL), ("ctrl+shift+o", FOLDERS_PANEL)):
        program.key(combination)
        portal.Panel(portals[0], title).press("Cancel")
        program.key(combination)
        portal.Panel(portals[0], title).dismiss(program)
    tree.act(program.destination_button(), "Press")
    portal.Panel(portals[0], DESTINATION_PANEL[0]).press("Cancel")
    expect_equal("rows", program.rows(), [])
    expect_equal("destination", tree.name_of(program.destination_button()), "Save to Choose destination…")
    program.key("ctrl+q")
    expect_equal("status", program.await_end(), 0)
    for process in portals:
        process.close()


@scenario()
def answers_again_when_the_portal_dies(session):
    """First the backend, then the frontend, each while it shows a panel."""
    program, backend, frontend = start(session)
    program.key("ctrl+o")
    portal.Panel(backend, FILES_PANEL[0]).await_focus(program)
    backend.kill()
    pointer.await_active(program.pid)
    await_idle()
    program.key("Tab", "space")
    program.await_checked("AIFF")

    # The next panel is that of a new backend.
    backend = portal.start_backend(session)
    program.key("ctrl+o")
    portal.Panel(backend, FILES_PANEL[0])
    frontend.kill()
    # The program's own panel replaces the lost one.
    program.window(FILES_PANEL[0])
    backend.kill()
    program.key("Escape")
    program.await_no_window(FILES_PANEL[0])
    await_idle()
    program.key("Tab", "space")
    program.await_checked("WAV")
    end(program)


@scenario()
def shows_its_own_panel_without_a_portal_backend(session):
    """The portal offers no file chooser if no backend is installed."""
    touch(session.music / "song.opus")
    nothing = session.folder / "no-backends"
    nothing.mkdir()
    frontend = portal.start_frontend(session, XDG_DESKTOP_PORTAL_DIR=str(nothing))
    program = session.start()
    program.add_files(session.music / "song.opus")
    program.await_names(["song.opus"])
    end(program, frontend)


@scenario()
def shows_its_own_panel_when_the_portal_backend_does_not_start(session):
    """The portal then reports each request as ended, at once."""
    frontend = portal.start_frontend(session)
    program = session.start()
    program.window()
    program.key("ctrl+o")
    wait_for("failed request", lambda: "Backend call failed" in frontend.log.read_text())
    program.window(FILES_PANEL[0])
    program.key("Escape")
    program.await_no_window(FILES_PANEL[0])
    end(program, frontend)
