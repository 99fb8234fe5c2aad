"""KWin with one virtual screen, a keyboard and a pointer."""

import json
import os
import pathlib
import shutil
import subprocess

from gi.repository import Gio, GLib

from driver.waiting import wait_for

from parts.fake_input import FakeInput
from parts.helper import Helper

# A script of KWin, which has no other way to tell of its windows.
WINDOWS = """
function named(window) { return window ? window.caption : null; }
var windows = workspace.clientList().map(function (window) {
    var place = window.frameGeometry;
    return { name: window.caption, pid: window.pid, parent: named(window.transientFor), is_modal: window.modal,
             is_active: window.active, rect: [place.x, place.y, place.width, place.height].map(Math.round) };
});
callDBus("%s", "/windows", "org.kestrel.Windows", "Tell", JSON.stringify(windows));
"""
RECEIVER = """
<node>
  <interface name="org.kestrel.Windows">
    <method name="Tell"><arg type="s" name="windows" direction="in"/></method>
  </interface>
</node>
"""


class KWin:
    """KWin with one output of a size in pixels. Draws in software."""

    SOCKET = "kestrel-kwin"
    NAME = "org.kde.KWin"
    # Linux key codes.
    CODES = {"Escape": 1, "Tab": 15, "q": 16, "o": 24, "Return": 28, "ctrl": 29, "a": 30, "shift": 42, "space": 57}

    def __init__(self, session, size):
        self.size = self.pixels = size
        self.scale = 1
        config = session.folder / "kwin-config"
        config.mkdir()
        # On a busy machine, a key may be up long after it was down.
        (config / "kcminputrc").write_text("[Keyboard]\nKeyRepeat=nothing\n")
        (config / "kdeglobals").write_text("[KDE]\nAnimationDurationFactor=0\n")
        # Windows are placed beside each other, and are not drawn to the edges of the screen.
        (config / "kwinrc").write_text("[Windows]\nPlacement=Smart\nBorderSnapZone=0\n")
        # Where the file's capabilities cannot be granted, as in many containers, it does not start; a copy has none.
        program = session.folder / "kwin_wayland"
        shutil.copyfile(shutil.which("kwin_wayland"), program)
        program.chmod(0o755)
        width, height = size
        self._kwin = Helper(
            session, "kwin", [str(program), "--virtual", "--width", str(width), "--height", str(height), "--socket",
                              self.SOCKET, "--no-lockscreen", "--no-global-shortcuts", "--no-kactivities"],
            DISPLAY=None, WAYLAND_DISPLAY=None, XDG_CONFIG_HOME=str(config), QT_LINUX_ACCESSIBILITY_ALWAYS_ON=None,
            LIBGL_ALWAYS_SOFTWARE="1", KWIN_WAYLAND_NO_PERMISSION_CHECKS="1", KWIN_SCREENSHOT_NO_PERMISSION_CHECKS="1")
        socket = pathlib.Path(os.environ["XDG_RUNTIME_DIR"]) / self.SOCKET
        wait_for("kwin", socket.exists)
        self._bus = Gio.bus_get_sync(Gio.BusType.SESSION)
        wait_for("scripting", lambda: self._call("/Scripting", "org.freedesktop.DBus.Peer", "Ping") == ())
        self._input = FakeInput(socket)
        self._script = session.folder / "windows.js"
        self._script.write_text(WINDOWS % self._bus.get_unique_name())
        self._told = []
        self._receiver = self._bus.register_object(
            "/windows", Gio.DBusNodeInfo.new_for_xml(RECEIVER).interfaces[0], self._receive)
        session.take_screenshot = self.take_screenshot

    def program_environment(self):
        return {"QT_QPA_PLATFORM": "wayland", "DISPLAY": None, "WAYLAND_DISPLAY": self.SOCKET}

    def _call(self, path, interface, method, arguments=None, descriptors=None):
        reply, _ = self._bus.call_with_unix_fd_list_sync(
            self.NAME, path, interface, method, arguments, None, 0, 20000, descriptors)
        return reply.unpack()

    def _receive(self, bus, sender, path, interface, method, arguments, invocation):
        self._told.append(json.loads(arguments.unpack()[0]))
        invocation.return_value(None)

    def windows(self):
        """The windows, each with its name, pid, place (rect), the name of its parent, is_modal and is_active."""
        self._told.clear()
        number, = self._call("/Scripting", "org.kde.kwin.Scripting", "loadScript",
                             GLib.Variant("(ss)", (str(self._script), "windows")))
        self._call(f"/{number}", "org.kde.kwin.Script", "run")
        wait_for("windows", lambda: self._told)
        self._call("/Scripting", "org.kde.kwin.Scripting", "unloadScript", GLib.Variant("(s)", ("windows",)))
        return self._told[0]

    def await_window(self, title):
        """Waits until the window with this title has the keyboard; returns it."""
        return wait_for(f'active window "{title}"', lambda: next(
            (window for window in self.windows() if window["name"] == title and window["is_active"]), None))

    def key(self, combination):
        """Presses a key, such as "Tab" or "ctrl+o"."""
        codes = [self.CODES[key] for key in combination.split("+")]
        for code in codes:
            self._input.key(code, True)
        for code in reversed(codes):
            self._input.key(code, False)

    def move_to(self, x, y):
        """Moves the pointer to a place on the screen."""
        self._input.move_to(x, y)

    def press(self):
        self._input.button(True)

    def release(self):
        self._input.button(False)

    def screenshot(self):
        """The width and height of the screen in pixels, and a function for the (red, green, blue) at x, y."""
        width, height, stride, data = self._capture()

        def pixel(x, y):
            start = y * stride + 4 * x
            blue, green, red = data[start:start + 3]
            return red, green, blue

        return width, height, pixel

    def take_screenshot(self, path):
        width, height, stride, data = self._capture()
        subprocess.run(["ffmpeg", "-nostdin", "-loglevel", "error", "-y", "-f", "rawvideo", "-pixel_format", "bgr0",
                        "-video_size", f"{stride // 4}x{height}", "-i", "-", "-vf", f"crop={width}:{height}:0:0",
                        path], input=data, check=True, timeout=20)

    def _capture(self):
        """Width, height, bytes in a row, and the rows, with the bytes of a pixel in the order of blue, green, red."""
        reading, writing = os.pipe()
        with open(reading, "rb") as pipe:
            with open(writing, "wb"):
                reply, = self._call("/org/kde/KWin/ScreenShot2", "org.kde.KWin.ScreenShot2", "CaptureActiveScreen",
                                    GLib.Variant("(a{sv}h)", ({}, 0)), Gio.UnixFDList.new_from_array([os.dup(writing)]))
            return reply["width"], reply["height"], reply["stride"], pipe.read()

    def close(self):
        self._bus.unregister_object(self._receiver)
        self._input.close()
        self._kwin.close()
