"""The desktop portal with its GTK or its KDE backend, on the session bus."""

import configparser

from gi.repository import Gio, GLib

from driver import input, tree
from driver.tree import Atspi, Role, State
from driver.waiting import wait_for

from parts import pointer
from parts.helper import Helper
from parts.idleness import await_idle

FRONTEND = "org.freedesktop.portal.Desktop"
BACKEND = "org.freedesktop.impl.portal.desktop.gtk"
KDE_BACKEND = "org.freedesktop.impl.portal.desktop.kde"
# The desktop whose portals the frontend looks for; each backend says which it is for.
DESKTOP = {"XDG_CURRENT_DESKTOP": "gnome"}
KDE = {"XDG_CURRENT_DESKTOP": "KDE"}


def await_name(name, is_owned=True):
    """Waits until a service has the name on the session bus, or none has."""
    bus = Gio.bus_get_sync(Gio.BusType.SESSION)

    def is_so():
        reply = bus.call_sync("org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus",
                              "NameHasOwner", GLib.Variant("(s)", (name,)), None, 0, -1)
        return reply.unpack()[0] == is_owned

    wait_for(f"{name} on the bus", is_so)


def with_music_folder(session):
    """The environment in which the user's music folder, where panels open, is session.music."""
    config = session.folder / "config"
    config.mkdir(exist_ok=True)
    (config / "user-dirs.dirs").write_text(f'XDG_MUSIC_DIR="{session.music}"\n')
    return {"XDG_CONFIG_HOME": str(config)}


def start_backend(session, **environment):
    # GTK opens its accessibility bridge unless told not to.
    backend = Helper(session, "portal-gtk", ["/usr/libexec/xdg-desktop-portal-gtk"],
                     **{"NO_AT_BRIDGE": None, **DESKTOP, **with_music_folder(session), **environment})
    await_name(BACKEND)
    return backend


def start_kde_backend(session, **environment):
    # Its path has the architecture.
    service = configparser.ConfigParser()
    service.read(f"/usr/share/dbus-1/services/{KDE_BACKEND}.service")
    backend = Helper(session, "portal-kde", [service["D-BUS Service"]["Exec"]],
                     **{**KDE, **with_music_folder(session), **environment})
    await_name(KDE_BACKEND)
    return backend


def start_frontend(session, **environment):
    frontend = Helper(session, "portal", ["/usr/libexec/xdg-desktop-portal"], **{**DESKTOP, **environment})
    await_name(FRONTEND)
    return frontend


class Panel:
    """The open panel of the backend with this title; waits for it."""

    def __init__(self, backend, title):
        self._backend = backend
        self._title = title
        self.node = wait_for(f'panel "{title}"', self._find)

    def _find(self):
        desktop = Atspi.get_desktop(0)
        for index in range(desktop.get_child_count()):
            application = desktop.get_child_at_index(index)
            if application and application.get_process_id() == self._backend.pid:
                for number in range(application.get_child_count()):
                    window = application.get_child_at_index(number)
                    if window and tree.has_state(window, State.SHOWING) and tree.name_of(window) == self._title:
                        return window
        return None

    def _node(self, roles, name):
        return wait_for(f'"{name}" in the panel', lambda: tree.find(self.node, roles, name))

    def parent_pid(self):
        """The pid of the window that the panel is transient for."""
        pointer.await_active(self._backend.pid)
        return pointer.parent_pid()

    def names(self):
        """The names of all cells of the list."""
        return [tree.name_of(node) for node in tree.descendants(self.node)
                if node.get_role() == Role.TABLE_CELL]

    def open_music_folder(self, *names):
        """Chooses the music folder among the places, and waits until the panel lists these names."""
        pointer.await_active(self._backend.pid)
        pointer.click(self._node(Role.LABEL, "music"))
        self._node(tree.BUTTONS, "music")
        for name in names:
            self._node(Role.TABLE_CELL, name)

    def select(self, *names):
        """Selects these entries by mouse."""
        for name in names[:1]:
            pointer.click(self._node(Role.TABLE_CELL, name))
        for name in names[1:]:
            with pointer.held("ctrl"):
                pointer.click(self._node(Role.TABLE_CELL, name))

    def press(self, name):
        pointer.click(self._node(tree.BUTTONS, name))
        self.await_end()

    def enter(self, path, button):
        """Enters the path into the KDE backend's field for it and presses the button, through AT-SPI."""
        field = self._node(Role.COMBO_BOX, "Name:")
        wait_for("field for the name", lambda: tree.find(field, Role.TEXT)).set_text_contents(str(path))
        self._act(button)

    def cancel(self):
        """Presses Cancel through AT-SPI."""
        self._act("Cancel")

    def _act(self, button):
        # The first is GTK's action, the second Qt's.
        tree.act(self._node(tree.BUTTONS, button), "click", "Press")
        # A compositor without a screen is never idle.
        wait_for(f'end of panel "{self._title}"', lambda: self._find() is None)

    def make_folder(self, name):
        """Makes a folder in the current one, and goes into it."""
        pointer.click(self._node(tree.BUTTONS, "Create Folder"))
        field = wait_for("field for the name", lambda: tree.find(self.node, Role.TEXT))
        wait_for("focus on the name", lambda: tree.has_state(field, State.FOCUSED))
        input.type_text(name)
        wait_for("typed name", lambda: tree.text_of(field) == name)
        pointer.click(self._node(tree.BUTTONS, "Create"))
        self._node(tree.BUTTONS, name)

    def await_focus(self, program):
        """Waits until the panel has the keyboard focus, and the program knows that it has lost it."""
        pointer.await_active(self._backend.pid)
        wait_for("inactive window", lambda: not tree.has_state(program.window(), State.ACTIVE))

    def dismiss(self, program):
        """Closes the panel by its window's shortcut."""
        self.await_focus(program)
        input.key("Escape")
        self.await_end()

    def await_end(self):
        wait_for(f'end of panel "{self._title}"', lambda: self._find() is None)
        # Until the portal's answer arrives, the window takes no keys.
        await_idle()
