"""ffmpeg is missing, or is installed or removed meanwhile."""

import shutil

from driver import input, screen, tree
from driver.registry import scenario
from driver.tree import Role
from driver.waiting import expect, expect_equal, wait_for

NOT_FOUND = "FFmpeg was not found. Install it with Homebrew: brew install ffmpeg"
# The text of the status, and the colour of its dot.
MISSING = ("FFmpeg required", (0xFF, 0x9F, 0x0A))
READY = ("FFmpeg ready", (0x32, 0xD7, 0x4B))


def await_status(program, text, colour):
    """Waits for the text of the status and the dot before it."""
    program.await_text(text)

    def is_dot_of_colour():
        x, y, _, height = tree.rectangle(program.find(Role.LABEL, text))
        dot_area = screen.pixels((x - 20, y, 20, height))
        return any(pixel == colour for row in dot_area for pixel in row)

    wait_for(f"dot of the colour {colour}", is_dot_of_colour)


def start_without_ffmpeg(session):
    session.hide_ffmpeg()
    program = session.start()
    await_status(program, *MISSING)
    program.add_files(session.script("song.opus", "convert write-output done"))
    program.choose_destination(session.output)
    return program


@scenario()
def says_that_ffmpeg_is_missing(session):
    program = start_without_ffmpeg(session)
    dismissals = [lambda: program.key("Return"), lambda: program.key("Escape"), lambda: program.key("space"),
                  lambda: input.click(tree.find(program.alert(), tree.BUTTONS, "OK"))]
    for dismiss in dismissals:
        program.click("Convert 1 File")
        alert = program.await_alert(NOT_FOUND)
        expect_equal("title", tree.name_of(alert), "Kestrel")
        dismiss()
        program.await_no_alert()
        program.await_states(["Ready"])
        expect("nothing is converted", not program.has_button("Cancel"))
    program.press("WAV")
    program.await_text("AIFF and WAV preserve uncompressed PCM audio.")
    expect("the message does not come back", program.alert() is None)
    expect_equal("files", list(session.output.iterdir()), [])
    program.quit()


@scenario()
def follows_an_ffmpeg_that_comes_and_goes(session):
    ffmpeg = session.ffmpeg_path()
    program = start_without_ffmpeg(session)
    ffmpeg.parent.mkdir(parents=True)
    # The change, the format whose button triggers a redraw, the status then, and the outcome of a batch.
    steps = [
        (lambda: ffmpeg.write_text("not to be executed"), "WAV", MISSING, "alert"),
        (lambda: shutil.copy(session.options.stand_in, ffmpeg), "AIFF", READY, "Complete"),
        (ffmpeg.unlink, "MP3", MISSING, "alert"),
    ]
    for change, audio_format, status, outcome in steps:
        change()
        program.press(audio_format)
        await_status(program, *status)
        program.press("Convert 1 File")
        if outcome == "alert":
            program.await_alert(NOT_FOUND)
            program.key("Return")
            program.await_no_alert()
        else:
            program.await_states([outcome])
    expect_equal("files", [path.name for path in session.output.iterdir()], ["song_converted.aiff"])
    program.quit()


@scenario()
def converts_at_once_with_an_ffmpeg_that_has_just_come(session):
    ffmpeg = session.ffmpeg_path()
    program = start_without_ffmpeg(session)
    ffmpeg.parent.mkdir(parents=True)
    shutil.copy(session.options.stand_in, ffmpeg)
    program.press("Convert 1 File")
    program.await_states(["Complete"])
    await_status(program, *READY)
    program.quit()


@scenario()
def fails_the_files_for_which_ffmpeg_has_gone(session):
    session.hide_ffmpeg()
    session.replace_ffmpeg()
    started, go = session.folder / "started", session.folder / "go"
    sources = [session.script("1.opus", f"convert touch {started}", f"convert wait-for {go}",
                              "convert write-output done"),
               session.script("2.opus", "convert write-output done"),
               session.script("3.opus", "convert write-output done")]
    program = session.start()
    await_status(program, *READY)
    program.convert(session.output, *sources)
    wait_for("the first file", started.exists)
    session.ffmpeg_path().unlink()
    go.touch()
    program.await_states(["Complete", "Failed", "Failed"])
    expect_equal("messages", [row.message for row in program.rows()], ["", NOT_FOUND, NOT_FOUND])
    await_status(program, *MISSING)
    session.replace_ffmpeg()
    program.press("Convert 3 Files")
    program.await_states(["Complete"] * 3)
    expect_equal("files", len(list(session.output.iterdir())), 3)
    program.quit()
