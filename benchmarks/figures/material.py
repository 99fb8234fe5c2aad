"""Input files for the benchmarks."""

import os
import shutil
import subprocess

from figures.programs import FFMPEG


def make_opus(path, seconds):
    """Makes music-like sound: several voices that come and go, in stereo, over a little noise."""
    voices = "+".join(f"0.1*sin({440 * 2 ** (step / 12):.3f}*2*PI*t)*(1+sin({0.13 * (step + 1):.3f}*t))"
                      for step in (0, 4, 7, 12, 16))
    subprocess.run([FFMPEG, "-v", "error", "-f", "lavfi", "-i",
                    f"aevalsrc={voices}+0.02*random(0)|{voices}+0.02*random(1):d={seconds}:s=48000",
                    "-c:a", "libopus", "-b:a", "128k", "-y", path], check=True, stdin=subprocess.DEVNULL)


def make_tracks(folder, count, seconds):
    """Makes `count` identical Opus files; returns their paths."""
    os.makedirs(folder)
    first = os.path.join(folder, "Track 0001.opus")
    make_opus(first, seconds)
    tracks = [first]
    for number in range(2, count + 1):
        tracks.append(os.path.join(folder, f"Track {number:04}.opus"))
        shutil.copyfile(first, tracks[-1])
    return tracks


def make_tree(root, folders, tracks, contents=None):
    """Makes a tree of `folders` album folders with `tracks` files each, empty or with the contents of a file.
    Up to a thousand are hard links to one file; a file system does not allow a hundred thousand."""
    number = 0
    for folder in range(folders):
        album = os.path.join(root, f"Artist {folder // 20:03}", f"Album {folder % 20:02}")
        os.makedirs(album)
        for track in range(1, tracks + 1):
            number += 1
            path = os.path.join(album, f"{track:02} Track {number:06}.opus")
            if contents is None:
                open(path, "xb").close()
            elif number % 1000 == 1:
                shutil.copyfile(contents, path)
                copy = path
            else:
                os.link(copy, path)
    return root
