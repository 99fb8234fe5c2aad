"""Real Wayland compositors without a screen, each with a keyboard."""

import json
import os
import pathlib
import subprocess

from gi.repository import Gio, GLib

from driver.program import environment_with
from driver.waiting import wait_for

from parts.helper import Helper


def _socket(name):
    return pathlib.Path(os.environ["XDG_RUNTIME_DIR"]) / name


class Sway:
    """Sway with one output of a size in logical pixels; its keyboard is that of wtype."""

    SOCKET = "wayland-1"

    def __init__(self, session, scale, size):
        self.scale = scale
        self.size = size
        width, height = (round(length * scale) for length in size)
        self.pixels = (width, height)
        configuration = session.folder / "sway.conf"
        # No bar, no title: the output is the window's.
        configuration.write_text(f"output HEADLESS-1 mode {width}x{height} scale {scale}\n"
                                 "xwayland disable\ndefault_border none\ninput * repeat_rate 0\n")
        command = ["sway", "--config", str(configuration)]
        if os.getuid() == 0:
            # Sway refuses to run as root, so it runs as another user of a namespace of its own.
            command = ["unshare", "--user", "--map-user=1000", "--map-group=1000", *command]
        self._sway = Helper(session, "sway", command, WLR_BACKENDS="headless", WLR_LIBINPUT_NO_DEVICES="1",
                            WLR_RENDERER="pixman", DISPLAY=None, WAYLAND_DISPLAY=None)
        runtime = pathlib.Path(os.environ["XDG_RUNTIME_DIR"])
        ipc = wait_for("sway", lambda: next(iter(runtime.glob("sway-ipc.*.sock")), None))
        wait_for("Wayland socket", _socket(self.SOCKET).exists)
        # What a client finds the compositor and its display by.
        self.environment = {"DISPLAY": None, "WAYLAND_DISPLAY": self.SOCKET, "SWAYSOCK": str(ipc)}
        # A keyboard lasts as long as the process that made it: this one does for the whole scenario.
        self._keyboard = Helper(session, "keyboard", ["wtype", "-s", "3600000"], **self.environment)
        wait_for("keyboard", self._has_keyboard)
        self._session = session
        session.take_screenshot = self.take_screenshot

    def program_environment(self):
        return {"QT_QPA_PLATFORM": "wayland", "DISPLAY": None, "WAYLAND_DISPLAY": self.SOCKET}

    def _run(self, *command):
        return subprocess.run(command, check=True, timeout=20, env=environment_with(self.environment),
                              stdin=subprocess.DEVNULL, stdout=subprocess.PIPE).stdout

    def _ask(self, what):
        return json.loads(self._run("swaymsg", "--raw", "--type", what))

    def _has_keyboard(self):
        try:
            return self._ask("get_inputs")
        except subprocess.CalledProcessError:  # Its socket is there, but not open yet.
            return False

    def windows(self):
        """The windows, each with its title (name), pid, place (rect) and whether it has the keyboard (focused)."""
        found, nodes = [], [self._ask("get_tree")]
        while nodes:
            node = nodes.pop()
            nodes += node["nodes"] + node["floating_nodes"]
            if node.get("pid"):
                found.append(node)
        return found

    def await_window(self, title):
        """Waits until the window with this title has the keyboard; returns it."""
        return wait_for(f'window "{title}" with the keyboard', lambda: next(
            (window for window in self.windows() if window["name"] == title and window["focused"]), None))

    def key(self, combination):
        """Presses a key, such as "Tab" or "ctrl+o"."""
        *modifiers, key = combination.split("+")
        down = [argument for modifier in modifiers for argument in ("-M", modifier)]
        up = [argument for modifier in modifiers for argument in ("-m", modifier)]
        self._run("wtype", *down, "-k", key, *up)

    def type_text(self, text):
        self._run("wtype", text)

    def take_screenshot(self, path):
        self._run("grim", path)

    def screenshot(self):
        """The width and height of the screen in pixels, and its rows of (red, green, blue)."""
        data = self._run("grim", "-t", "ppm", "-")
        kind, width, height, _ = data.split(maxsplit=4)[:4]
        assert kind == b"P6"
        width, height = int(width), int(height)
        body = data[-3 * width * height:]
        return width, height, lambda x, y: tuple(body[3 * (y * width + x):3 * (y * width + x) + 3])

    def close(self):
        self._keyboard.close()
        self._sway.close()


class Mutter:
    """Mutter with one virtual monitor; the keyboard is that of its remote desktop."""

    SOCKET = "kestrel-mutter"
    NAME = "org.gnome.Mutter.RemoteDesktop"
    # Linux key codes.
    CODES = {"Tab": 15, "q": 16, "o": 24, "Return": 28, "ctrl": 29, "shift": 42, "space": 57, "Down": 108, "Escape": 1}

    def __init__(self, session, size):
        width, height = size
        settings = session.folder / "mutter-config" / "glib-2.0" / "settings" / "keyfile"
        settings.parent.mkdir(parents=True)
        # On a busy machine, a key may be up long after it was down.
        settings.write_text("[org/gnome/desktop/peripherals/keyboard]\nrepeat=false\n")
        self._mutter = Helper(
            session, "mutter", ["mutter", "--headless", "--wayland", "--no-x11", f"--wayland-display={self.SOCKET}",
                                "--virtual-monitor", f"{width}x{height}"], DISPLAY=None, WAYLAND_DISPLAY=None,
            GSETTINGS_BACKEND="keyfile", XDG_CONFIG_HOME=str(session.folder / "mutter-config"))
        wait_for("mutter", _socket(self.SOCKET).exists)
        self._bus = Gio.bus_get_sync(Gio.BusType.SESSION)
        self._path = wait_for("remote desktop", self._create_session)[0]
        self._call(self._path, f"{self.NAME}.Session", "Start")
        # The first key makes the keyboard.
        self.key("shift")

    def _create_session(self):
        return self._call("/org/gnome/Mutter/RemoteDesktop", self.NAME, "CreateSession")

    def _call(self, path, interface, method, arguments=None):
        return self._bus.call_sync(self.NAME, path, interface, method, arguments, None, 0, -1).unpack()

    def program_environment(self):
        return {"QT_QPA_PLATFORM": "wayland", "DISPLAY": None, "WAYLAND_DISPLAY": self.SOCKET}

    def key(self, combination):
        """Presses a key, such as "Tab" or "ctrl+o"."""
        codes = [self.CODES[key] for key in combination.split("+")]
        for code, is_down in [(code, True) for code in codes] + [(code, False) for code in reversed(codes)]:
            self._call(self._path, f"{self.NAME}.Session", "NotifyKeyboardKeycode",
                       GLib.Variant("(ub)", (code, is_down)))

    def close(self):
        self._mutter.close()
