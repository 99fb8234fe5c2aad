"""Batches that are cancelled, fail in parts, or meet an ffmpeg that behaves badly."""

from driver import media
from driver.registry import scenario
from driver.waiting import expect, expect_equal, wait_equal, wait_for

DURATION = "probe err   Duration: 00:00:10.00, start: 0.000000\\n"
HALF_PROGRESS = "convert out out_time_ms=5000000\\nprogress=continue\\n"
FLOOD_BYTES = 300_000_000


def converted(session, name="song"):
    return session.output / f"{name}_converted.mp3"


def blocked_at_half(session, name, *lines):
    """A script that blocks at half of the progress, and the file that it then creates."""
    started = session.folder / f"{name}-started"
    script = session.script(name, DURATION, *lines, HALF_PROGRESS, f"convert touch {started}", "convert block")
    return script, started


def await_blocked(program, started):
    wait_for("the conversion", started.exists)
    wait_for("half of the file", lambda: program.progress()[-1:] == [0.5])


def await_stop(program, states):
    program.await_states(states)
    program.button("Convert 1 File" if len(states) == 1 else f"Convert {len(states)} Files")
    expect("nothing can be cancelled any more", not program.has_button("Cancel"))
    expect_equal("progress bars", program.progress(), [])
    wait_equal("children of the program", program.children, [])


@scenario()
def cancels_by_the_signal_and_converts_the_rest_later(session):
    session.replace_ffmpeg()
    calls = session.folder / "calls"
    record = f"convert record-arguments {calls}"
    first = session.script("1.opus", record, "convert write-output one")
    second, started = blocked_at_half(session, "2.opus", record)
    third = session.script("3.opus", record, "convert write-output three")
    program = session.start()
    program.convert(session.output, first, second, third)
    await_blocked(program, started)
    program.await_states(["Complete", "Converting", "Ready"])
    program.await_text("3 audio files · 1 complete")
    program.click("Cancel")
    await_stop(program, ["Complete", "Cancelled", "Ready"])
    expect_equal("conversions", calls.read_bytes().count(b"\n"), 2)
    session.script("2.opus", record, "convert write-output two")
    program.press("Convert 3 Files")
    await_stop(program, ["Complete"] * 3)
    expect_equal("conversions", calls.read_bytes().count(b"\n"), 4)
    made = {path.name: path.read_text() for path in session.output.iterdir()}
    expect_equal("files", made, {"1_converted.mp3": "one", "2_converted.mp3": "two",
                                 "3_converted.mp3": "three"})
    program.press("Convert 3 Files")
    await_stop(program, ["Complete"] * 3)
    expect_equal("conversions", calls.read_bytes().count(b"\n"), 4)
    program.quit()


@scenario()
def shows_the_last_stderr_lines_of_an_ffmpeg_that_handles_sigint(session):
    session.replace_ffmpeg()
    lines = "".join(f"word {number}\\n" for number in range(1, 11))
    first, started = blocked_at_half(session, "1.opus", f"convert err {lines}", "convert on-interrupt 255 ")
    second = session.script("2.opus", "convert write-output two")
    program = session.start()
    program.convert(session.output, first, second)
    await_blocked(program, started)
    program.press("Cancel")
    await_stop(program, ["Failed", "Ready"])
    expect_equal("message", program.row("1.opus").message,
                 " ".join(f"word {number}" for number in range(3, 11)))
    expect_equal("files", list(session.output.iterdir()), [])
    program.quit()


@scenario(is_long=True)
def cancels_the_real_ffmpeg_and_keeps_what_it_has_written(session):
    track = media.make_long_track(session.music / "song.opus", hours=3)
    program = session.start()
    program.convert(session.output, track)
    program.await_progress()
    expect_equal("children", len(program.children()), 1)
    program.press("Cancel")
    await_stop(program, ["Failed"])
    message = program.row("song.opus").message
    expect(f'the last stderr lines, not "{message}"', "received signal 2" in message)
    expect_equal("what was written", media.describe(converted(session))[0], "mp3")
    program.press("Convert 1 File")
    program.await_states(["Converting"])
    second = session.output / "song_converted_2.mp3"
    wait_for("a second file", second.exists)
    program.press("Cancel")
    await_stop(program, ["Failed"])
    program.quit()


@scenario()
def waits_for_an_ffmpeg_that_ignores_the_signal(session):
    session.replace_ffmpeg()
    started, go = session.folder / "started", session.folder / "go"
    first = session.script("1.opus", "convert ignore-interrupt", f"convert touch {started}",
                           f"convert wait-for {go}", "convert write-output one")
    second = session.script("2.opus", "convert write-output two")
    program = session.start()
    program.convert(session.output, first, second)
    wait_for("the conversion", started.exists)
    # By mouse: X11 delivers the clicks in order.
    for _ in range(3):
        program.click("Cancel")
    program.click("WAV")
    program.await_text("AIFF and WAV preserve uncompressed PCM audio.")
    program.await_states(["Converting", "Ready"])
    go.touch()
    await_stop(program, ["Complete", "Ready"])
    expect_equal("files", list(session.output.iterdir()), [converted(session, "1")])
    program.quit()


@scenario()
def converts_with_an_ffmpeg_that_says_nothing(session):
    session.replace_ffmpeg()
    started, go = session.folder / "started", session.folder / "go"
    source = session.script("song.opus", "convert close-out", "convert close-err",
                            f"convert touch {started}", f"convert wait-for {go}",
                            "convert write-output done")
    program = session.start()
    program.convert(session.output, source)
    wait_for("the conversion", started.exists)
    program.await_states(["Converting"])
    expect_equal("progress", program.progress(), [0, 0])
    go.touch()
    await_stop(program, ["Complete"])
    expect_equal("file", converted(session).read_text(), "done")
    program.quit()


@scenario()
def stays_usable_while_ffmpeg_floods_its_pipes(session):
    session.replace_ffmpeg()
    sources = [session.script(f"{name}.opus", DURATION, f"probe flood-err {FLOOD_BYTES // 10}",
                              f"convert flood-{name} {FLOOD_BYTES}", "convert write-output done")
               for name in ("err", "out")]
    program = session.start()
    program.convert(session.output, *sources)
    answers = 0

    def is_over():
        nonlocal answers
        states = program.states()
        answers += 1
        return states == ["Complete"] * 2

    wait_for("end of the flood", is_over, seconds=120)
    # A window that answers only between conversions gets to three.
    expect(f"the window answers meanwhile, not {answers} times in all", answers > 4)
    await_stop(program, ["Complete"] * 2)
    expect_equal("files", [converted(session, name).read_text() for name in ("err", "out")],
                 ["done"] * 2)
    program.quit()


@scenario()
def goes_on_after_failures_and_tries_only_them_again(session):
    names = ["1.opus", "2.opus", "3.ogg", "4.oga", "5.opus"]
    broken = {"2.opus": "not audio\n", "4.oga": ""}
    files = [session.music / name for name in names]
    for file in files:
        if file.name in broken:
            file.write_text(broken[file.name])
        else:
            media.make_track(file, seconds=0.5)
    program = session.start()
    program.convert(session.output, *files)
    await_stop(program, ["Complete", "Failed", "Complete", "Failed", "Complete"])
    for name in broken:
        message = program.row(name).message
        expect(f'ffmpeg\'s error message, not "{message}"', "Invalid data found" in message)
    program.await_text("5 audio files · 3 complete")
    for name in broken:
        media.make_track(session.music / name, seconds=0.5)
    program.press("Convert 5 Files")
    await_stop(program, ["Complete"] * 5)
    expect_equal("files", sorted(path.name for path in session.output.iterdir()),
                 [f"{number}_converted.mp3" for number in range(1, 6)])
    for path in session.output.iterdir():
        expect(f"{path.name} is whole", abs(media.describe(path)[2] - 0.5) < 0.1)
    program.quit()


@scenario()
def leaves_files_that_are_added_meanwhile_to_the_next_batch(session):
    session.replace_ffmpeg()
    go = session.folder / "go"
    first = session.script("1.opus", f"convert wait-for {go}", "convert write-output one")
    second = session.script("2.opus", "convert write-output two")
    program = session.start()
    program.convert(session.output, first)
    program.await_states(["Converting"])
    program.add_files(second)
    program.await_states(["Converting", "Ready"])
    go.touch()
    await_stop(program, ["Complete", "Ready"])
    program.press("Convert 2 Files")
    await_stop(program, ["Complete"] * 2)
    program.quit()
