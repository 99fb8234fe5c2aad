"""One running instance of the program, driven through AT-SPI, keyboard and mouse."""

import dataclasses
import os
import signal
import subprocess

from gi.repository import GLib

from driver import input, processes, tree
from driver.tree import Atspi, Role, State
from driver.waiting import TIMEOUT, Unmet, wait_equal, wait_for

FILES_PANEL = ("Choose Opus audio to convert", "Add Audio")
FOLDERS_PANEL = ("Choose a folder of Opus audio", "Add Folder")
DESTINATION_PANEL = ("Choose output folder", "Choose")


@dataclasses.dataclass
class Row:
    """A row of the queue, parsed from its accessible name and description."""

    node: object
    name: str
    folder: str
    state: str
    message: str
    position: str

    @classmethod
    def of(cls, node):
        STATES = ["Ready", "Converting", "Complete", "Cancelled", "Failed"]
        label = tree.name_of(node)
        for state in STATES:
            head, comma, tail = label.partition(f", {state}")
            if comma and (tail == "" or tail.startswith(", ")):
                name, _, folder = head.rpartition(", in ")
                return cls(node, name, folder, state, tail[2:], node.get_description())
        raise Unmet(f'a row reads "{label}"')


class Program:
    """Starts the program on construction; `quit` or `kill` ends it."""

    def __init__(self, command, environment, log, stdin=subprocess.DEVNULL):
        self.process = subprocess.Popen(command, env=environment, stdin=stdin, stdout=log, stderr=log)
        self.pid = self.process.pid

    # Finding

    def windows(self):
        """The visible windows of the program, alerts and panels included."""
        if self.process.poll() is not None:
            raise Unmet(f"the program has ended, status {self.process.returncode}")
        desktop = Atspi.get_desktop(0)
        for index in range(desktop.get_child_count()):
            application = desktop.get_child_at_index(index)
            if application and application.get_process_id() == self.pid:
                for number in range(application.get_child_count()):
                    window = application.get_child_at_index(number)
                    if window and tree.has_state(window, State.SHOWING):
                        yield window

    def find_window(self, title):
        return next((w for w in self.windows() if tree.name_of(w) == title), None)

    def window(self, title="Kestrel"):
        """Waits for the window with this title; returns it."""
        return wait_for(f'window "{title}"', lambda: self.find_window(title))

    def await_no_window(self, title):
        """Waits until the window is gone from the accessibility tree and does not have the X11 focus."""

        def has_gone():
            window = input.focused_window()
            return self.find_window(title) is None and (window is None or window[1] != title)

        wait_for(f'end of window "{title}"', has_gone)

    def find(self, roles, name=None, hidden=False):
        return tree.find(self.window(), roles, name, hidden)

    def button(self, name):
        """Waits until the button is visible and enabled; returns it."""

        def found():
            button = self.find(tree.BUTTONS, name)
            return button if button and tree.is_enabled(button) else None

        return wait_for(f'button "{name}"', found)

    def await_checked(self, name):
        """Waits until the button is checked."""
        button = self.button(name)

        def is_checked():
            return tree.has_state(button, State.CHECKED)

        wait_for(f'checked button "{name}"', is_checked)

    def has_button(self, name):
        return self.find(tree.BUTTONS, name) is not None

    def has_text(self, text):
        return self.find(Role.LABEL, text) is not None

    def await_text(self, text):
        wait_for(f'text "{text}"', lambda: self.has_text(text))

    def destination_button(self):
        """The footer's button, which shows the output folder."""

        def found():
            for node in tree.descendants(self.window()):
                if node.get_role() in tree.BUTTONS and tree.name_of(node).startswith("Save to"):
                    return node
            return None

        return wait_for("destination button", found)

    def alert(self):
        """The open alert, or None."""
        return next((window for window in self.windows() if window.get_role() == Role.ALERT), None)

    def await_alert(self, text, has_keyboard=True):
        """Waits for the alert with this text and, if the display has a keyboard, for its focus."""

        def found():
            alert = self.alert()
            if not alert or not tree.find(alert, Role.LABEL, text):
                return None
            button = tree.find(alert, tree.BUTTONS, "OK")
            return alert if not has_keyboard or tree.has_state(button, State.FOCUSED) else None

        return wait_for(f'alert "{text}"', found)

    def await_no_alert(self):
        wait_for("end of the alert", lambda: self.alert() is None)

    # The queue

    def rows(self):
        """The visible rows, in queue order."""
        items = tree.find(self.window(), Role.LIST)
        if items is None:
            return []
        nodes = [items.get_child_at_index(index) for index in range(items.get_child_count())]
        return [Row.of(node) for node in nodes if node and tree.has_state(node, State.SHOWING)]

    def row(self, name):
        return next((row for row in self.rows() if row.name == name), None)

    def states(self):
        return [row.state for row in self.rows()]

    def names(self):
        return [row.name for row in self.rows()]

    def await_states(self, expected, seconds=TIMEOUT):
        wait_equal("states of the rows", self.states, expected, seconds)

    def await_names(self, expected, seconds=TIMEOUT):
        wait_equal("names in the queue", self.names, expected, seconds)

    def await_rows(self, expected):
        """Waits until the `n` visible rows, as (name, position), are `expected(n)`."""
        seen = []

        def is_expected():
            seen[:] = [(row.name, row.position) for row in self.rows()]
            return seen and seen == expected(len(seen))

        try:
            wait_for("visible rows", is_expected)
        except Unmet as unmet:
            raise Unmet(f"{unmet}; got {seen}") from None

    def progress(self):
        """The fractions of the visible progress bars, from top to bottom."""
        bars = [node for node in tree.descendants(self.window())
                if node.get_role() == Role.PROGRESS_BAR]
        return [bar.get_current_value() / (bar.get_maximum_value() or 1) for bar in bars]

    def await_progress(self):
        """Waits until the converting file's bar, the last one, is strictly between 0 and 1."""

        def is_between():
            fractions = self.progress()
            return fractions and 0 < fractions[-1] < 1

        wait_for("progress", is_between)

    # Actions

    def press(self, name):
        """Presses the button through AT-SPI."""
        tree.act(self.button(name), "Press", "Toggle")

    def click(self, name):
        input.click(self.button(name))

    def key(self, *combinations):
        """Presses keys one after the other, once a window of the program has the keyboard focus."""
        input.await_keyboard_focus(self.pid)
        input.key(*combinations)

    def type_text(self, text):
        input.await_keyboard_focus(self.pid)
        input.type_text(text)

    def command(self, name):
        """Triggers a menu item through AT-SPI."""
        item = wait_for(f'command "{name}"', lambda: self.find(Role.MENU_ITEM, name, hidden=True))
        tree.act(item, "Press")

    def fill_panel(self, panel, *paths):
        """Waits for the panel, enters the paths through AT-SPI and confirms."""
        title, prompt = panel
        window = self.window(title)
        field = wait_for(f'field of "{title}"', lambda: tree.find(window, Role.TEXT))
        field.set_text_contents(" ".join(f'"{path}"' for path in paths) if len(paths) > 1
                                else str(paths[0]))

        def confirm():
            button = tree.find(window, tree.BUTTONS, prompt)
            return button if button and tree.is_enabled(button) else None

        tree.act(wait_for(f'button "{prompt}"', confirm), "Press")
        self.await_no_window(title)

    def add_files(self, *paths):
        self.press("Add Audio")
        self.fill_panel(FILES_PANEL, *paths)

    def choose_destination(self, path):
        tree.act(self.destination_button(), "Press")
        self.fill_panel(DESTINATION_PANEL, path)

    def bit_depth_item(self, depth):
        """The item in the combo box's popup; None while that is closed."""
        return next((item for window in self.windows()
                     for item in [tree.find(window, Role.LIST_ITEM, depth)] if item), None)

    def open_bit_depth_popup(self, depth):
        """Opens the combo box's popup by mouse; returns its item."""
        picker = wait_for("bit depth", lambda: self.find(Role.COMBO_BOX))
        wait_for("enabled bit depth", lambda: tree.is_enabled(picker))

        def open_popup():
            # The release of a slow click picks the current item and closes the popup again.
            input.click(picker)
            try:
                return wait_for(f'item "{depth}"', lambda: self.bit_depth_item(depth), seconds=2)
            except Unmet:
                return None

        return wait_for("open popup", open_popup)

    def pick_bit_depth(self, depth):
        """Picks it from the popup, by mouse."""
        picker = wait_for("bit depth", lambda: self.find(Role.COMBO_BOX))
        if tree.name_of(picker) != depth:
            input.click(self.open_bit_depth_popup(depth))
            wait_for(f"bit depth {depth}", lambda: self.find(Role.COMBO_BOX, depth))

    def convert(self, destination, *files):
        """Queues the files, chooses the output folder and starts the batch."""
        self.add_files(*files)
        self.choose_destination(destination)
        self.press("Convert 1 File" if len(files) == 1 else f"Convert {len(files)} Files")

    def focus(self):
        """The accessible with the keyboard focus in any window, the innermost if several claim it, or None."""
        focused = None
        for window in self.windows():
            for node in tree.descendants(window):
                if tree.has_state(node, State.FOCUSED):
                    focused = node
        return focused

    # Ending

    def children(self):
        return processes.children(self.pid)

    def await_end(self, seconds=TIMEOUT):
        """Waits for the program to exit; returns its exit status."""
        try:
            return self.process.wait(seconds)
        except subprocess.TimeoutExpired:
            raise Unmet(f"the program did not end within {seconds} s") from None

    def ask_to_quit(self):
        """Triggers the menu's Quit without waiting for the exit."""
        try:
            self.command("Quit")
        except GLib.Error:  # The program may exit before it replies.
            pass

    def quit(self):
        """Quits by the menu. Requires exit status 0."""
        self.ask_to_quit()
        status = self.await_end()
        if status != 0:
            raise Unmet(f"the program ended with status {status}")

    def kill(self):
        if self.process.poll() is None:
            self.process.send_signal(signal.SIGKILL)
            self.process.wait()


def environment_with(changes):
    """A copy of os.environ with the changes; None unsets a variable."""
    result = {**os.environ, **{key: value for key, value in changes.items() if value is not None}}
    for variable, value in changes.items():
        if value is None:
            result.pop(variable, None)
    return result
