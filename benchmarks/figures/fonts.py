"""Many installed fonts, as a system for typesetting has them."""

import contextlib
import os
import struct
import subprocess

COUNT = 2000
_FONT = "/usr/share/fonts/truetype/dejavu/DejaVuSansMono.ttf"
_FAMILY = "DejaVu"


def _table(font, tag):
    """Returns the offset and the length of a table of an SFNT font."""
    for index in range(struct.unpack_from(">H", font, 4)[0]):
        name, _, offset, length = struct.unpack_from(">4sLLL", font, 12 + 16 * index)
        if name == tag:
            return offset, length
    raise SystemExit(f"benchmarks: {_FONT} has no table {tag}")


def _write(font, outlines, family, path):
    """Writes the font under another family name. Its outlines, which nothing draws, become a hole."""
    offset, length = outlines
    renamed = (font.replace(_FAMILY.encode("utf-16-be"), family.encode("utf-16-be"))
               .replace(_FAMILY.encode("ascii"), family.encode("ascii")))
    with open(path, "wb") as file:
        file.write(renamed[:offset])
        file.seek(offset + length)
        file.write(renamed[offset + length:])


@contextlib.contextmanager
def many_fonts(work):
    """Yields an environment in which COUNT families more are installed, and in fontconfig's cache."""
    folder, cache, configuration = (os.path.join(work, name) for name in ("fonts", "cache", "fonts.conf"))
    os.mkdir(folder)
    with open(_FONT, "rb") as file:
        font = file.read()
    outlines = _table(font, b"glyf")
    for number in range(COUNT):
        family = f"F{number:05}"
        _write(font, outlines, family, os.path.join(folder, f"{family}.ttf"))
    with open(configuration, "w", encoding="utf-8") as file:
        # The first cache folder that exists is written to.
        file.write(f"<fontconfig><cachedir>{cache}</cachedir><include>/etc/fonts/fonts.conf</include>"
                   f"<dir>{folder}</dir></fontconfig>")
    environment = dict(os.environ, FONTCONFIG_FILE=configuration)
    subprocess.run(["fc-cache", folder], env=environment, check=True)
    listed = subprocess.run(["fc-list", ":", "family"], env=environment, check=True, capture_output=True, text=True)
    if len(set(listed.stdout.split("\n"))) < COUNT:
        raise SystemExit("benchmarks: the fonts are not installed")
    yield environment
