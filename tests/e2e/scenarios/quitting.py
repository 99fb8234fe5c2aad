"""Quitting the program."""

from driver import input, media, processes, tree
from driver.desktop import FileManager
from driver.program import FILES_PANEL, FOLDERS_PANEL
from driver.registry import scenario
from driver.tree import State
from driver.waiting import expect, expect_equal, wait_equal, wait_for

# Each requires that the window has the keyboard focus.
WAYS = {
    "the caption button": lambda program: program.click("Close"),
    "the shortcut": lambda program: program.key("ctrl+q"),
    "the window manager": lambda program: program.key("alt+F4"),
    "the menu": lambda program: program.ask_to_quit(),
}


def await_success(program, what):
    expect_equal(f"status after {what}", program.await_end(), 0)


def focus_window(program):
    input.click(program.button("MP3"))


@scenario()
def quits_in_every_way(session):
    for what, ask in WAYS.items():
        program = session.start()
        program.add_files(session.script("song.opus"))
        focus_window(program)
        ask(program)
        await_success(program, what)


@scenario()
def quits_at_once_during_a_batch(session):
    session.replace_ffmpeg()
    for number, (what, ask) in enumerate(WAYS.items()):
        started, go = session.folder / f"{number}-started", session.folder / f"{number}-go"
        first = session.script(f"{number}.opus", f"convert touch {started}", f"convert wait-for {go}",
                               "convert out progress=end\\n", "convert err The end\\n",
                               "convert write-output done")
        second = session.script("later.opus", "convert write-output done")
        program = session.start()
        program.convert(session.output, first, second)
        wait_for("the conversion", started.exists)
        ffmpeg, = program.children()
        focus_window(program)
        ask(program)
        await_success(program, what)
        expect("ffmpeg is still at work", processes.is_running(ffmpeg))
        go.touch()
        wait_for("end of ffmpeg", lambda: not processes.is_running(ffmpeg))
    expect_equal("files", list(session.output.glob("later*")), [])


@scenario(is_long=True)
def lets_ffmpeg_finish_the_file_at_work(session):
    minutes = 10
    track = media.make_long_track(session.music / "song.opus", hours=minutes / 60)
    program = session.start()
    program.convert(session.output, track)
    program.await_progress()
    ffmpeg, = program.children()
    program.key("ctrl+q")
    await_success(program, "the shortcut")
    expect("ffmpeg is still at work", processes.is_running(ffmpeg))
    wait_for("end of ffmpeg", lambda: not processes.is_running(ffmpeg), seconds=60)
    codec, _, seconds = media.describe(session.output / "song_converted.mp3")
    expect_equal("codec", codec, "mp3")
    expect(f"the file is whole, not {seconds} s", abs(seconds - 60 * minutes) < 1)


@scenario(is_long=True)
def keeps_two_programs_out_of_each_others_way(session):
    long = media.make_long_track(session.music / "one/song.opus", hours=5 / 60)
    short, shorter = [media.make_track(session.music / folder / "song.opus", seconds=seconds)
                      for folder, seconds in (("two", 2), ("three", 1))]
    programs = [session.start(), session.start()]
    programs[0].convert(session.output, long)
    # A name is chosen before ffmpeg creates the file, so the programs must not choose at the same time.
    wait_for("the first program's file", (session.output / "song_converted.mp3").exists)
    programs[1].convert(session.output, short, shorter)
    programs[1].await_states(["Complete"] * 2)
    programs[0].await_states(["Complete"])
    for program in programs:
        program.quit()
    made = {path.name: round(media.describe(path)[2]) for path in session.output.iterdir()}
    expect_equal("lengths of the files", sorted(made.items()), [
        ("song_converted.mp3", 300), ("song_converted_2.mp3", 2), ("song_converted_3.mp3", 1)])


@scenario()
def takes_a_name_that_another_program_has_taken_meanwhile(session):
    session.replace_ffmpeg()
    started, go = session.folder / "started", session.folder / "go"
    first = session.script("one/song.opus", "convert write-output one", f"convert touch {started}",
                           f"convert wait-for {go}")
    second = session.script("two/song.opus", "convert write-output two")
    programs = [session.start(), session.start()]
    programs[0].convert(session.output, first)
    wait_for("the first program's file", started.exists)
    programs[1].convert(session.output, second)
    programs[1].await_states(["Complete"])
    programs[0].await_states(["Converting"])
    programs[1].quit()
    go.touch()
    programs[0].await_states(["Complete"])
    programs[0].quit()
    made = {path.name: path.read_text() for path in session.output.iterdir()}
    expect_equal("files", made, {"song_converted.mp3": "one", "song_converted_2.mp3": "two"})


@scenario()
def quits_at_once_while_the_file_manager_does_not_answer(session):
    manager = FileManager(is_silent=True)
    program = session.start()
    program.add_files(session.script("song.opus"))
    program.choose_destination(session.output)
    program.click("Show output folder")
    wait_equal("shown", lambda: manager.shown, [[session.output.as_uri()]])
    focus_window(program)
    program.key("ctrl+q")
    await_success(program, "the shortcut")


def await_focus_in(window):
    wait_for("focus in the panel", lambda: any(
        tree.has_state(node, State.FOCUSED) for node in tree.descendants(window)))


def open_panel(program, name, panel):
    program.press(name)
    window = program.window(panel[0])
    await_focus_in(window)
    return window


@scenario()
def does_not_quit_under_an_open_panel(session):
    track = session.script("song.opus")
    program = session.start()
    panel = open_panel(program, "Add Audio", FILES_PANEL)
    program.key("ctrl+q")
    input.click(program.button("Close"))
    await_focus_in(panel)
    program.type_text(str(track))
    program.key("Return")
    program.await_no_window(FILES_PANEL[0])
    program.await_names(["song.opus"])
    open_panel(program, "Folder", FOLDERS_PANEL)
    program.key("alt+F4")
    program.await_no_window(FOLDERS_PANEL[0])
    program.await_names(["song.opus"])
    focus_window(program)
    program.key("ctrl+q")
    await_success(program, "the shortcut")


@scenario()
def does_not_quit_under_a_message(session):
    program = session.start()
    program.add_files(session.script("song.opus"))
    program.click("Convert 1 File")
    program.await_alert("Choose an output folder first.")
    input.click(program.button("Close"))
    program.key("ctrl+q")

    def is_dismissed():
        # The alert regains the keyboard focus asynchronously.
        program.key("Escape")
        return program.alert() is None

    wait_for("end of the alert", is_dismissed)
    program.await_names(["song.opus"])
    focus_window(program)
    program.key("ctrl+q")
    await_success(program, "the shortcut")


@scenario()
def quits_with_an_open_panel_when_assistive_technology_asks(session):
    session.replace_ffmpeg()
    program = session.start()
    open_panel(program, "Add Audio", FILES_PANEL)
    program.ask_to_quit()
    await_success(program, "the menu")
    started, go = session.folder / "started", session.folder / "go"
    program = session.start()
    program.convert(session.output, session.script(
        "song.opus", f"convert touch {started}", f"convert wait-for {go}", "convert write-output done"))
    wait_for("the conversion", started.exists)
    open_panel(program, "Add Audio", FILES_PANEL)
    program.ask_to_quit()
    await_success(program, "the menu")
    go.touch()
    wait_for("end of ffmpeg", lambda: (session.output / "song_converted.mp3").exists())
