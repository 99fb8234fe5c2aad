"""How a desktop finds the installed program: desktop entry, icons, D-Bus name."""

import configparser
import pathlib

from gi.repository import Gio, GLib

from driver import media
from driver.registry import scenario
from driver.waiting import expect_equal, wait_equal

ID = "org.kestrel.Converter"


def share(session):
    return pathlib.Path(session.options.program).parent.parent / "share"


def bus_name_owner():
    """The pid of the owner of the program's name on the session bus, or None."""
    bus = Gio.bus_get_sync(Gio.BusType.SESSION)
    try:
        (pid,) = bus.call_sync(
            "org.freedesktop.DBus", "/", "org.freedesktop.DBus", "GetConnectionUnixProcessID",
            GLib.Variant("(s)", [ID]), None, Gio.DBusCallFlags.NONE, -1)
        return pid
    except GLib.Error:
        return None


@scenario()
def starts_from_its_entry_in_the_menu(session):
    entry = configparser.ConfigParser(interpolation=None)
    entry.optionxform = str
    entry.read(share(session) / f"applications/{ID}.desktop", encoding="utf-8")
    entry = entry["Desktop Entry"]
    expect_equal("name", entry["Name"], "Kestrel")
    expect_equal("command", entry["Exec"], "kestrel")
    for field in ("MimeType", "NoDisplay", "OnlyShowIn"):
        expect_equal(field, field in entry, False)
    icons = share(session) / "icons/hicolor"
    sizes = {path.parent.parent.name for path in icons.glob(f"*/apps/{entry['Icon']}.*")}
    wanted = {f"{size}x{size}" for size in (16, 22, 24, 32, 48, 64, 128, 256, 512)}
    expect_equal("icons", sizes, wanted | {"scalable"})

    track = media.make_track(session.music / "track.opus")
    folder = pathlib.Path(session.options.program).parent
    program = session.start_by_name(entry["Exec"], PATH=f"{folder}:/usr/bin:/bin")
    program.add_files(track)
    program.await_names(["track.opus"])
    program.quit()


@scenario()
def is_known_on_the_bus_by_its_id(session):
    first = session.start()
    wait_equal("owner", bus_name_owner, first.pid)
    second = session.start()
    second.window()
    expect_equal("owner beside a second program", bus_name_owner(), first.pid)
    first.quit()
    wait_equal("owner after the first has ended", bus_name_owner, second.pid)
    second.quit()
    wait_equal("owner after both have ended", bus_name_owner, None)
