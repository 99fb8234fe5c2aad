"""D-Bus services of a desktop."""

from gi.repository import Gio

_INTERFACE = """
<node>
  <interface name="org.freedesktop.FileManager1">
    <method name="ShowItems">
      <arg type="as" name="uris" direction="in"/>
      <arg type="s" name="startup id" direction="in"/>
    </method>
  </interface>
</node>
"""


class FileManager:
    """A fake file manager on the session bus. It handles calls only while a wait runs the GLib main context, and
    with `is_silent` replies to none."""

    def __init__(self, is_silent=False):
        self.shown = []
        self._is_silent = is_silent
        self._bus = Gio.bus_get_sync(Gio.BusType.SESSION)
        interface = Gio.DBusNodeInfo.new_for_xml(_INTERFACE).interfaces[0]
        self._bus.register_object("/org/freedesktop/FileManager1", interface, self._handle_call)
        Gio.bus_own_name_on_connection(self._bus, interface.name, Gio.BusNameOwnerFlags.NONE)

    def _handle_call(self, bus, sender, path, interface, method, arguments, invocation):
        self.shown.append(arguments[0])
        if not self._is_silent:
            invocation.return_value(None)
