#!/usr/bin/python3
"""A window that prints the URI list of what is dropped on it, one drop a line."""

import sys

import gi

gi.require_version("Gdk", "3.0")
gi.require_version("Gtk", "3.0")
from gi.repository import Gdk, Gtk  # noqa: E402


def received(window, context, x, y, data, info, time):
    print(*data.get_uris(), flush=True)
    Gtk.drag_finish(context, True, False, time)


def main():
    window = Gtk.Window(title="Drop target")
    window.set_default_size(400, 200)
    window.drag_dest_set(Gtk.DestDefaults.ALL, [Gtk.TargetEntry.new("text/uri-list", 0, 0)], Gdk.DragAction.COPY)
    window.connect("drag-data-received", received)
    window.connect("destroy", Gtk.main_quit)
    window.show_all()
    Gtk.main()


if __name__ == "__main__":
    sys.exit(main())
