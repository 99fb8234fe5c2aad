"""Screenshots."""

import os
import subprocess


def _grab(place, size, *output):
    area = ["-video_size", "{}x{}".format(*size)] if size else []
    # x11grab waits for the next frame: a high frame rate makes that immediate.
    command = ["ffmpeg", "-y", "-loglevel", "error", "-f", "x11grab", "-framerate", "1000",
               "-draw_mouse", "0", *area]
    done = subprocess.run([*command, "-i", place, "-frames:v", "1", *output], check=True,
                          timeout=20, stdin=subprocess.DEVNULL, stdout=subprocess.PIPE)
    return done.stdout


def take_screenshot(path, rectangle=None):
    """Saves a screenshot of the display, or of a rectangle of it."""
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
    """Whether it is the accent colour, light or dark, perhaps blended slightly with the background."""
    red, green, blue = pixel
    return blue > green + 60 and red > green + 40
