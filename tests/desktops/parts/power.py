"""Fakes, of python-dbusmock, of what keeps the machine awake: logind on a private system bus, and GNOME's session
manager."""

import sys

from gi.repository import Gio, GLib

from driver.waiting import wait_for

from parts import portal
from parts.helper import Helper

_LOGIND = ("org.freedesktop.login1", "/org/freedesktop/login1", "org.freedesktop.login1.Manager")
_SESSION_MANAGER = ("org.gnome.SessionManager", "/org/gnome/SessionManager", "org.gnome.SessionManager")
_CONFIGURATION = """<!DOCTYPE busconfig PUBLIC "-//freedesktop//DTD D-Bus Bus Configuration 1.0//EN"
 "http://www.freedesktop.org/standards/dbus/1.0/busconfig.dtd">
<busconfig>
  <listen>{address}</listen>
  <auth>EXTERNAL</auth>
  <policy context="default">
    <allow send_destination="*" eavesdrop="true"/>
    <allow eavesdrop="true"/>
    <allow own="*"/>
  </policy>
</busconfig>
"""


def _mock(session, name, *arguments, **environment):
    return Helper(session, name, [sys.executable, "-m", "dbusmock", *arguments], **environment)


class Logind:
    """A system bus with logind; `environment` is that of the programs that shall find it."""

    def __init__(self, session):
        socket = session.folder / "system-bus"
        self._address = f"unix:path={socket}"
        self.environment = {"DBUS_SYSTEM_BUS_ADDRESS": self._address}
        configuration = session.folder / "system-bus.conf"
        configuration.write_text(_CONFIGURATION.format(address=self._address))
        self._daemon = Helper(session, "system-bus-daemon", ["dbus-daemon", "--nofork",
                                                             f"--config-file={configuration}"])
        wait_for("system bus", socket.exists)
        self._logind = _mock(session, "logind", "--system", "--template", "logind", **self.environment)
        flags = Gio.DBusConnectionFlags.AUTHENTICATION_CLIENT | Gio.DBusConnectionFlags.MESSAGE_BUS_CONNECTION
        self._bus = Gio.DBusConnection.new_for_address_sync(self._address, flags, None, None)
        wait_for("logind", lambda: self.inhibitors() is not None)

    def inhibitors(self):
        """What is held: what, who, why and mode of each. None before logind runs."""
        try:
            reply = self._bus.call_sync(*_LOGIND, "ListInhibitors", None, None, 0, -1, None)
        except GLib.Error:
            return None
        return [inhibitor[:4] for inhibitor in reply.unpack()[0]]

    def close(self):
        self._bus.close_sync()
        self._logind.close()
        self._daemon.close()


class SessionManager:
    """GNOME's session manager on the session bus, as far as it takes inhibitors, with the screen saver, without which
    the portal's backend takes the desktop for another one."""

    def __init__(self, session):
        self._screen_saver = _mock(session, "screen-saver", "--session", "--template", "gnome_screensaver")
        portal.await_name("org.gnome.ScreenSaver")
        self._mock = _mock(session, "session-manager", "--session", *_SESSION_MANAGER)
        bus = Gio.bus_get_sync(Gio.BusType.SESSION)

        def has_methods():
            for method in (("Inhibit", "susu", "u", "ret = 7"), ("Uninhibit", "u", "", "")):
                arguments = GLib.Variant("(sssss)", (_SESSION_MANAGER[2], *method))
                try:
                    bus.call_sync(*_SESSION_MANAGER[:2], "org.freedesktop.DBus.Mock", "AddMethod", arguments, None, 0,
                                  -1, None)
                except GLib.Error:
                    return False
            return True

        wait_for("session manager", has_methods)

    def calls(self):
        """The calls of Inhibit and Uninhibit, without the time."""
        lines = (line.split(" ", 1)[1] for line in self._mock.log.read_text().splitlines() if " " in line)
        return [line for line in lines if line.startswith(("Inhibit", "Uninhibit"))]

    def close(self):
        self._mock.close()
        self._screen_saver.close()
