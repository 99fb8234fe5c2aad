"""Converts three tracks to each format, and prints each step."""

import pathlib
import shutil

from driver import media, screen, tree
from driver.registry import scenario
from driver.waiting import expect, expect_equal

TRACKS = (("1 Low tone", 3, 220), ("2 High tone", 5, 880), ("10 Middle tone", 8, 440))
CODECS = {"MP3": "mp3", "AIFF": "pcm_s24be", "WAV": "pcm_s24le"}


def make_tracks(session):
    session.say("Making three tracks:")
    tracks = []
    for name, seconds, frequency in TRACKS:
        path = session.music / "Evening tapes" / f"{name}.opus"
        tracks.append(media.make_track(path, seconds, frequency))
        session.say(f"  {path.name:<34} {media.describe(path)[2]:8.3f} s")
    return tracks


def convert(session, audio_format, tracks):
    session.say(f"{audio_format}: starting the program")
    program = session.start()
    session.say(f"{audio_format}: choosing the format")
    program.press(audio_format)
    session.say(f"{audio_format}: adding {len(tracks)} tracks")
    program.add_files(*tracks)
    program.await_names([track.name for track in tracks])
    session.say(f"{audio_format}: choosing the output folder")
    program.choose_destination(session.output)
    session.say(f"{audio_format}: converting")
    program.press(f"Convert {len(tracks)} Files")
    program.await_states(["Complete"] * len(tracks), seconds=120)
    session.say(f"{audio_format}: every row reads Complete")
    screen.take_screenshot(str(session.folder / "window.png"), tree.rectangle(program.window()))
    session.say(f"{audio_format}: quitting")
    program.quit()


def check_files(session, tracks):
    session.say("Made:")
    for audio_format, codec in CODECS.items():
        for track, (_, seconds, _) in zip(tracks, TRACKS):
            path = session.output / f"{track.stem}_converted.{audio_format.lower()}"
            actual_codec, sample_format, length = media.describe(path)
            session.say(f"  {path.name:<34} {actual_codec:<10} {sample_format:<5} {length:8.3f} s")
            expect_equal("codec", actual_codec, codec)
            # An MP3 file is a whole number of frames, the first of which is the encoder's own.
            expect(f"{path.name} is as long as its source", abs(length - seconds) < 0.1)
    expect_equal("number of files", len(list(session.output.iterdir())), len(tracks) * len(CODECS))


@scenario(is_long=True)
def demonstration(session):
    tracks = make_tracks(session)
    for audio_format in CODECS:
        convert(session, audio_format, tracks)
    check_files(session, tracks)
    if session.options.keep:
        keep = pathlib.Path(session.options.keep)
        shutil.copytree(session.output, keep, dirs_exist_ok=True)
        shutil.copy(session.folder / "window.png", keep)
        session.say(f"The files, and a screenshot of the window, are in {keep}")
        session.say(f"The screenshot: {keep / 'window.png'}")
