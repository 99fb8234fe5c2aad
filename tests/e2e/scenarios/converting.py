"""Batches."""

from driver import hands, media
from driver.registry import scenario
from driver.waiting import expect, wait_equal


@scenario()
def shows_progress_that_moves(session):
    session.replace_ffmpeg()
    steps = [session.folder / f"step-{number}" for number in range(3)]
    source = session.script(
        "song.opus",
        "probe err   Duration: 00:00:10.00, start: 0.000000\\n",
        "convert out out_time_ms=2500000\\nprogress=continue\\n",
        f"convert wait-for {steps[0]}",
        "convert out out_time_ms=7500000\\nprogress=continue\\n",
        f"convert wait-for {steps[1]}",
        "convert write-output done",
    )
    program = session.start()
    program.add_files(source)
    program.choose_destination(session.output)
    program.press("Convert 1 File")
    program.await_states(["Converting"])
    for fraction, step in zip((0.25, 0.75), steps):
        wait_equal("progress", program.progress, [fraction, fraction])
        step.touch()
    program.await_states(["Complete"])
    expect("the file is there", (session.output / "song_converted.mp3").read_text() == "done")
    program.quit()
