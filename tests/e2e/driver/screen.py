"""What is on the screen."""

import os
import subprocess


def _grab(place, size, *output):
    area = ["-video_size", "{}x{}".format(*size)] if size else []
    # A picture is taken when the next one of a film would be: at a high rate, at once.
    command = ["ffmpeg", "-y", "-loglevel", "error", "-f", "x11grab", "-framerate", "1000",
               "-draw_mouse", "0", *area]
    done = subprocess.run([*command, "-i", place, "-frames:v", "1", *output], check=True,
                          timeout=20, stdin=subprocess.DEVNULL, stdout=subprocess.PIPE)
    return done.stdout


def take_picture(path, rectangle=None):
    """A picture of the whole display, or of a rectangle on it."""
    place = os.environ["DISPLAY"]
    size = None
    if rectangle is not None:
        x, y, *size = rectangle
        place += f"+{x},{y}"
    _grab(place, size, path)


def pixels(rectangle):
    """The rows of a rectangle on the screen, each a list of (red, green, blue)."""
    x, y, width, height = rectangle
    data = _grab(f"{os.environ['DISPLAY']}+{x},{y}", (width, height),
                 "-f", "rawvideo", "-pix_fmt", "rgb24", "-")
    row = 3 * width
    return [
        [tuple(data[start + offset:start + offset + 3]) for offset in range(0, row, 3)]
        for start in range(0, row * height, row)
    ]


def is_purple(pixel):
    """Whether the colour is the accent's, light or dark, perhaps mixed with the ground a little."""
    red, green, blue = pixel
    return blue > green + 60 and red > green + 40
