"""The output folder."""

import shutil

from driver import input, media, screen, tree
from driver.desktop import FileManager
from driver.program import DESTINATION_PANEL
from driver.registry import scenario
from driver.waiting import expect, expect_equal, wait_equal, wait_for

REVEAL = "Show output folder"
DISK_FULL = "No space left on device"


def shown_destination(program):
    return tree.name_of(program.destination_button())


def await_destination(program, path):
    wait_equal("destination", lambda: shown_destination(program), f"Save to {path}")


def make_launcher(session):
    """A folder with a fake xdg-open, and the file to which that writes its URL."""
    folder, opened = session.folder / "bin", session.folder / "opened"
    folder.mkdir()
    launcher = folder / "xdg-open"
    launcher.write_text(f'#!/bin/sh\necho "$1" >{opened}.part\n/bin/mv {opened}.part {opened}\n')
    launcher.chmod(0o755)
    return folder, opened


@scenario()
def keeps_the_folder_that_was_picked_last(session):
    other = session.folder / "other & more"
    other.mkdir()
    program = session.start()
    expect_equal("destination", shown_destination(program), "Save to Choose destination…")
    expect("nothing to reveal", not program.has_button(REVEAL))
    program.choose_destination(session.output)
    await_destination(program, session.output)
    input.click(program.destination_button())
    program.fill_panel(DESTINATION_PANEL, other)
    await_destination(program, other)
    program.button(REVEAL)
    input.click(program.destination_button())
    window = program.window(DESTINATION_PANEL[0])
    wait_for("a field to type in", lambda: program.focus() is not None)
    program.key("Escape")
    program.await_no_window(tree.name_of(window))
    await_destination(program, other)
    program.quit()


@scenario()
def asks_for_a_folder_before_it_converts(session):
    program = session.start()
    program.add_files(session.script("song.opus"))
    program.press("Convert 1 File")
    program.await_alert("Choose an output folder first.")
    program.key("Return")
    program.await_no_alert()
    program.await_states(["Ready"])
    program.quit()


@scenario()
def shows_the_folder_in_the_file_manager(session):
    manager = FileManager()
    folder = session.folder / "50% of #1"
    folder.mkdir()
    program = session.start()
    program.choose_destination(folder)
    program.click(REVEAL)
    wait_equal("shown", lambda: manager.shown, [[folder.as_uri()]])
    program.quit()


@scenario()
def opens_the_folder_if_no_file_manager_answers(session):
    launchers, opened = make_launcher(session)
    program = session.start(PATH=str(launchers))
    program.choose_destination(session.output)
    program.click(REVEAL)
    wait_for("the launcher", opened.exists)
    expect_equal("address", opened.read_text().strip(), session.output.as_uri())
    program.quit()


@scenario()
def goes_on_where_nothing_can_show_the_folder(session):
    program = session.start(PATH=str(session.folder), BROWSER=None, DEFAULT_BROWSER=None)
    program.choose_destination(session.output)
    for _ in range(2):
        program.click(REVEAL)
        # What Qt writes to stderr, which no user sees.
        session.expected_output += f"Unable to detect a launcher for '{session.output.as_uri()}'\n"
    program.add_files(media.make_track(session.music / "song.opus"))
    program.press("Convert 1 File")
    program.await_states(["Complete"])
    program.quit()


@scenario()
def finishes_a_batch_in_the_folder_it_was_started_with(session):
    session.replace_ffmpeg()
    go, later = session.folder / "go", session.folder / "later"
    later.mkdir()
    sources = [session.script(f"{number}.opus", f"convert wait-for {go}", "convert write-output done")
               for number in (1, 2)]
    program = session.start()
    program.convert(session.output, *sources)
    program.await_states(["Converting", "Ready"])
    program.choose_destination(later)
    await_destination(program, later)
    go.touch()
    program.await_states(["Complete"] * 2)
    expect_equal("files of the first batch", sorted(path.name for path in session.output.iterdir()),
                 ["1_converted.mp3", "2_converted.mp3"])
    program.add_files(session.script("3.opus", "convert write-output done"))
    program.press("Convert 3 Files")
    program.await_states(["Complete"] * 3)
    expect_equal("files of the second", [path.name for path in later.iterdir()], ["3_converted.mp3"])
    program.quit()


@scenario()
def makes_a_folder_again_that_is_deleted_meanwhile(session):
    session.replace_ffmpeg()
    started = [session.folder / f"{number}-started" for number in range(2)]
    go = [session.folder / f"{number}-go" for number in range(2)]
    sources = [session.script(f"{number}.opus", f"convert touch {started[number]}",
                              f"convert wait-for {go[number]}", "convert write-output done")
               for number in range(2)]
    sources.append(session.script("2.opus", "convert write-output done"))
    program = session.start()
    program.convert(session.output, *sources)
    wait_for("the first file", started[0].exists)
    shutil.rmtree(session.output)
    go[0].touch()
    wait_for("the second file", started[1].exists)
    expect_equal("made again", list(session.output.iterdir()), [])
    shutil.rmtree(session.output)
    session.output.write_text("in the way")
    go[1].touch()
    program.await_states(["Complete", "Complete", "Failed"])
    message = program.row("2.opus").message
    expect(f'the reason, not "{message}"',
           message.startswith(f"The folder “{session.output}” could not be created:"))
    expect_equal("what is in the way", session.output.read_text(), "in the way")
    program.quit()


@scenario()
def says_that_nothing_can_be_written(session):
    session.forbid_writing(session.output)
    tracks = [media.make_track(session.music / f"{number}.opus") for number in (1, 2)]
    program = session.start()
    program.convert(session.output, *tracks)
    program.await_states(["Failed"] * 2)
    for row in program.rows():
        expect(f'the reason, not "{row.message}"', "Read-only file system" in row.message)
    program.choose_destination(session.music)
    program.press("Convert 2 Files")
    program.await_states(["Complete"] * 2)
    program.quit()


@scenario()
def says_that_the_disk_is_full(session):
    session.limit(session.output, "1m")
    # Longer than ffmpeg buffers before its first write.
    tracks = [media.make_track(session.music / f"{number}.opus", seconds=20) for number in (1, 2)]
    program = session.start()
    program.press("WAV")
    program.convert(session.output, *tracks)
    program.await_states(["Failed"] * 2)
    for row in program.rows():
        expect(f'the reason, not "{row.message}"', DISK_FULL in row.message)
    program.choose_destination(session.music)
    program.press("Convert 2 Files")
    program.await_states(["Complete"] * 2)
    for number in (1, 2):
        made = session.music / f"{number}_converted.wav"
        expect(f"{made.name} is whole", abs(media.describe(made)[2] - 20) < 0.1)
    program.quit()


def screenshot_of(program, path):
    """A screenshot of the destination button, which shows the path and is not hovered."""
    program.choose_destination(path)
    await_destination(program, path)
    input.move_to(0, 0)
    area = tree.rectangle(program.destination_button())

    def stable():
        first, second = screen.pixels(area), screen.pixels(area)
        return first if first == second else None

    return wait_for("stable screenshot", stable)


def left_part(screenshot):
    return [row[:150] for row in screenshot]


@scenario()
def shows_the_start_and_the_end_of_a_long_path(session):
    long_name = ("a folder with a name that takes its room " * 4).strip()
    paths = [session.folder / middle / long_name / end
             for middle, end in (("first", "end"), ("second", "end"), ("first", "other"))]
    program = session.start()
    # A window with the focus has been placed by the window manager.
    input.await_keyboard_focus(program.pid)
    before = tree.rectangle(program.window())
    short = screenshot_of(program, session.output)
    for path in paths:
        path.mkdir(parents=True)
    first, other_middle, other_end = [screenshot_of(program, path) for path in paths]
    expect("the start is shown", left_part(first) == left_part(short))
    expect("the middle is not shown", first == other_middle)
    expect("the end is shown", first != other_end)
    expect_equal("place of the window", tree.rectangle(program.window()), before)
    program.quit()
