"""Makes, probes and decodes audio files."""

import json
import os
import subprocess


def _run(*command):
    return subprocess.run(command, check=True, timeout=120, stdin=subprocess.DEVNULL,
                          stdout=subprocess.PIPE).stdout


def make_track(path, seconds=1.0, frequency=440):
    """Makes a real Opus file of a sine wave, and its parent folders; the path may be bytes."""
    os.makedirs(os.path.dirname(path), exist_ok=True)
    _run("ffmpeg", "-nostdin", "-loglevel", "error", "-y", "-f", "lavfi",
         "-i", f"sine=frequency={frequency}:duration={seconds}:sample_rate=48000", "-ac", "2",
         "-c:a", "libopus", "-b:a", "64k", "-compression_level", "0", "-f", "ogg", path)
    return path


def make_long_track(path, hours):
    """Makes a real Opus file that takes long to convert: one minute, repeated."""
    minute = make_track(f"{path}.minute", seconds=60)
    _run("ffmpeg", "-nostdin", "-loglevel", "error", "-stream_loop", str(60 * hours - 1),
         "-i", minute, "-c", "copy", "-f", "ogg", path)
    os.remove(minute)
    return path


def describe(path):
    """Returns codec and sample format of the first audio stream, and the duration in seconds."""
    found = json.loads(_run("ffprobe", "-loglevel", "error", "-select_streams", "a:0",
                            "-show_entries", "stream=codec_name,sample_fmt:format=duration",
                            "-of", "json", path))
    stream = found["streams"][0]
    return stream["codec_name"], stream["sample_fmt"], float(found["format"]["duration"])


def samples(path, codec):
    """Decodes the first audio stream to raw samples of a codec such as pcm_s16le."""
    return _run("ffmpeg", "-nostdin", "-loglevel", "error", "-i", path, "-map", "0:a:0",
                "-c:a", codec, "-f", codec.removeprefix("pcm_"), "-")
