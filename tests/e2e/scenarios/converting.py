"""Conversions and their output files."""

from driver import media
from driver.program import FOLDERS_PANEL
from driver.registry import scenario
from driver.waiting import expect, expect_equal, wait_equal, wait_for

# By format and bit depth: the codec and the sample format that ffprobe names.
PCM = {
    ("AIFF", "16-bit"): ("pcm_s16be", "s16"),
    ("AIFF", "24-bit"): ("pcm_s24be", "s32"),
    ("WAV", "16-bit"): ("pcm_s16le", "s16"),
    ("WAV", "24-bit"): ("pcm_s24le", "s32"),
}


def expect_duration(path, actual, expected):
    # An MP3 file is a whole number of frames, the first of which is the encoder's own.
    expect(f"{path.name} lasts {actual} s, its source {expected} s", abs(actual - expected) < 0.1)


@scenario()
def converts_to_mp3(session):
    track = media.make_track(session.music / "song.opus", seconds=2)
    program = session.start()
    program.convert(session.output, track)
    program.await_states(["Complete"])
    made = session.output / "song_converted.mp3"
    codec, sample_format, seconds = media.describe(made)
    expect_equal("codec", (codec, sample_format), ("mp3", "fltp"))
    expect_duration(made, seconds, 2)
    program.await_text("1 audio file · 1 complete")
    program.quit()


@scenario()
def converts_to_uncompressed_formats_sample_by_sample(session):
    track = media.make_track(session.music / "song.opus", seconds=1)
    for (audio_format, depth), (codec, sample_format) in PCM.items():
        program = session.start()
        program.press(audio_format)
        program.await_text("AIFF and WAV preserve uncompressed PCM audio.")
        program.pick_bit_depth(depth)
        program.add_files(track)
        output = session.output / codec
        output.mkdir()
        program.choose_destination(output)
        program.press("Convert 1 File")
        program.await_states(["Complete"])
        program.quit()
        made = output / f"song_converted.{audio_format.lower()}"
        expect_equal("what was made", media.describe(made)[:2], (codec, sample_format))
        expect(f"{codec}: every sample is the decoder's",
               media.samples(made, codec) == media.samples(track, codec))


@scenario()
def never_overwrites(session):
    tracks = [
        media.make_track(session.music / folder / "song.opus", seconds=seconds)
        for folder, seconds in (("one", 0.5), ("two", 1), ("three", 1.5))
    ]
    kept = session.output / "song_converted_2.mp3"
    kept.write_text("mine")
    program = session.start()
    program.press("Folder")
    program.fill_panel(FOLDERS_PANEL, *(track.parent for track in tracks))
    program.await_names(["song.opus"] * 3)
    folders = [row.folder for row in program.rows()]
    expect_equal("folders", sorted(folders), ["one", "three", "two"])
    program.choose_destination(session.output)
    program.press("Convert 3 Files")
    program.await_states(["Complete"] * 3)
    expect_equal("the file that was there", kept.read_text(), "mine")
    durations = {"one": 0.5, "two": 1, "three": 1.5}
    for folder, number in zip(folders, ("", "_3", "_4")):
        made = session.output / f"song_converted{number}.mp3"
        expect_duration(made, media.describe(made)[2], durations[folder])
    expect_equal("files", len(list(session.output.iterdir())), 4)
    program.quit()


@scenario()
def shows_progress_that_moves(session):
    session.replace_ffmpeg()
    steps = [session.folder / f"step-{number}" for number in range(2)]
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
    program.convert(session.output, source)
    program.await_states(["Converting"])
    for fraction, step in zip((0.25, 0.75), steps):
        # The batch's bar, and the file's.
        wait_equal("progress", program.progress, [fraction, fraction])
        step.touch()
    program.await_states(["Complete"])
    expect_equal("the file", (session.output / "song_converted.mp3").read_text(), "done")
    program.quit()


@scenario(is_long=True)
def moves_the_progress_of_a_real_conversion(session):
    track = media.make_long_track(session.music / "long.opus", hours=1)
    program = session.start()
    program.convert(session.output, track)
    seen = []

    def has_moved():
        _, fraction = program.progress()
        if fraction not in seen:
            seen.append(fraction)
        return len(seen) >= 4

    program.await_states(["Converting"])
    wait_for("progress that moves", has_moved)
    expect(f"it never decreases: {seen}", seen == sorted(seen) and seen[-1] <= 1)
    program.press("Cancel")
    # On SIGINT, the real ffmpeg exits with an error.
    program.await_states(["Failed"])
    program.quit()
