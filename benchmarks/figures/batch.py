"""Whole batches in the real window, beside a shell loop that runs the same commands."""

import os
import shutil
import statistics
import subprocess

from figures import material, programs
from figures.row import Row, at_most, at_most_times

# The output folder, the file extension, and the encoder arguments come first, then "--" and the files.
SHELL_LOOP = r"""
ffmpeg=$1 out=$2 extension=$3 encoder=$4
shift 4
for file in "$@"; do
    name=${file##*/}
    "$ffmpeg" -hide_banner -i "$file"
    "$ffmpeg" -n -hide_banner -i "$file" -map 0:a:0 -vn $encoder -map_metadata 0 -progress pipe:1 -nostats \
        "$out/${name%.*}_converted.$extension"
done
"""


def _check(out, count):
    found = sum(os.path.getsize(os.path.join(out, name)) > 0 for name in os.listdir(out))
    if found != count:
        raise SystemExit(f"benchmarks: {found} of {count} files were converted")


def _shell(work, tracks, extension, encoder):
    out = os.path.join(work, "shell")
    os.makedirs(out)

    def loop():
        subprocess.run(["sh", "-c", SHELL_LOOP, "sh", programs.FFMPEG, out, extension, encoder, *tracks],
                       stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)

    seconds = programs.wall_seconds(loop)
    _check(out, len(tracks))
    shutil.rmtree(out)
    return seconds


def _kestrel(work, tracks, output_format):
    out = os.path.join(work, "kestrel")
    report = programs.drive("--destination", out, "--format", output_format, os.path.dirname(tracks[0]))
    _check(out, len(tracks))
    shutil.rmtree(out)
    return report["batch"]


def _compare(runs, work, tracks, output_format, encoder):
    """Returns the seconds of the shell loop and the reports of the program, one per run."""
    return programs.interleaved(runs, lambda: _shell(work, tracks, output_format.lower(), encoder),
                                lambda: _kestrel(work, tracks, output_format))


def _median(reports, key):
    return statistics.median(report[key] for report in reports)


def short_rows(runs, work):
    tracks = material.make_tracks(os.path.join(work, "short"), 200, 1)
    shell, kestrel = _compare(runs, work, tracks, "WAV", "-c:a pcm_s16le")
    yield at_most_times("batch of 200 one-second files to 16-bit WAV", "s", statistics.median(shell),
                        _median(kestrel, "wall_seconds"), 1.0)


def long_rows(runs, work):
    tracks = material.make_tracks(os.path.join(work, "long"), 10, 300)
    shell, kestrel = _compare(runs, work, tracks, "MP3", "-c:a libmp3lame -q:a 2 -id3v2_version 3")
    yield at_most_times("batch of 10 five-minute files to MP3", "s", statistics.median(shell),
                        _median(kestrel, "wall_seconds"), 1.01)
    children = _median(kestrel, "children_seconds")
    own = _median(kestrel, "own_seconds")
    yield Row("the program's own CPU time during the latter, beside its children's", "s", children, own,
              "at most 1 %", own <= 0.01 * children)


def stall_rows(runs, work):
    """Real conversions, cancelled after some seconds, with the rest of the queue waiting."""
    sound = os.path.join(work, "second.opus")
    material.make_opus(sound, 1)
    tree = material.make_tree(os.path.join(work, "queued"), 2000, 50, contents=sound)

    def longest():
        out = os.path.join(work, "converted")
        report = programs.drive("--destination", out, "--format", "WAV", "--seconds", "8", "--watch-stalls",
                                tree)
        shutil.rmtree(out)
        return report["batch"]["longest_stall_milliseconds"]

    yield at_most("longest stall of the main thread in a batch with 100,000 jobs queued", "ms",
                  *programs.interleaved_medians(runs, longest), 16)
