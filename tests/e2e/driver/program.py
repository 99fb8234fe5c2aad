"""One run of the program, with everything that can be seen and done from outside."""

import dataclasses
import os
import signal
import subprocess

from gi.repository import GLib

from driver import input, processes, tree
from driver.tree import Atspi, Role, State
from driver.waiting import SECONDS, Unmet, wait_equal, wait_for

FILES_PANEL = ("Choose Opus audio to convert", "Add Audio")
FOLDERS_PANEL = ("Choose a folder of Opus audio", "Add Folder")
DESTINATION_PANEL = ("Choose output folder", "Choose")


@dataclasses.dataclass
class Row:
    """A row of the queue as it is read out."""

    node: object
    name: str
    folder: str
    state: str
    message: str
    position: str

    @classmethod
    def of(cls, node):
        STATES = ["Ready", "Converting", "Complete", "Cancelled", "Failed"]
        sentence = tree.name_of(node)
        for state in STATES:
            head, comma, tail = sentence.partition(f", {state}")
            if comma and (tail == "" or tail.startswith(", ")):
                name, _, folder = head.rpartition(", in ")
                return cls(node, name, folder, state, tail[2:], node.get_description())
        raise Unmet(f'a row reads "{sentence}"')


class Program:
    """Started at once. `quit` or `kill` ends it."""

    def __init__(self, command, environment, log, stdin=subprocess.DEVNULL):
        self.process = subprocess.Popen(command, env=environment, stdin=stdin, stdout=log, stderr=log)
        self.pid = self.process.pid

    # Finding

    def windows(self):
        """The windows on the display, the program's own and its panels."""
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
        """The window of that title, once it is on the display."""
        return wait_for(f'window "{title}"', lambda: self.find_window(title))

    def await_no_window(self, title):
        """Waits until there is no such window, for the window system too."""

        def has_gone():
            window = input.keyboard_window()
            return self.find_window(title) is None and (window is None or window[1] != title)

        wait_for(f'end of window "{title}"', has_gone)

    def find(self, roles, name=None, hidden=False):
        return tree.find(self.window(), roles, name, hidden)

    def button(self, name):
        """The button, once it is there and can be pressed."""

        def found():
            button = self.find(tree.BUTTONS, name)
            return button if button and tree.is_enabled(button) else None

        return wait_for(f'button "{name}"', found)

    def await_choice(self, name):
        """Waits until the button is the one chosen of its group."""
        button = self.button(name)

        def is_chosen():
            return tree.has_state(button, State.CHECKED)

        wait_for(f'choice of "{name}"', is_chosen)

    def has_button(self, name):
        return self.find(tree.BUTTONS, name) is not None

    def has_text(self, text):
        return self.find(Role.LABEL, text) is not None

    def await_text(self, text):
        wait_for(f'text "{text}"', lambda: self.has_text(text))

    def destination_button(self):
        """The button in the footer that shows where the files go."""

        def found():
            for node in tree.descendants(self.window()):
                if node.get_role() in tree.BUTTONS and tree.name_of(node).startswith("Save to"):
                    return node
            return None

        return wait_for("destination button", found)

    def alert(self):
        """The message that is shown over the window, if there is one."""
        return next((window for window in self.windows() if window.get_role() == Role.ALERT), None)

    def await_alert(self, text, has_keyboard=True):
        """The message, once it reads so and has the keyboard, where the display has one."""

        def found():
            alert = self.alert()
            if not alert or not tree.find(alert, Role.LABEL, text):
                return None
            button = tree.find(alert, tree.BUTTONS, "OK")
            return alert if not has_keyboard or tree.has_state(button, State.FOCUSED) else None

        return wait_for(f'message "{text}"', found)

    def await_no_alert(self):
        wait_for("end of the message", lambda: self.alert() is None)

    # The queue

    def rows(self):
        """The rows that are in sight, in the order of the queue."""
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

    def await_states(self, expected, seconds=SECONDS):
        wait_equal("states of the rows", self.states, expected, seconds)

    def await_names(self, expected, seconds=SECONDS):
        wait_equal("names in the queue", self.names, expected, seconds)

    def await_rows(self, expected):
        """Waits until as many rows as are in sight are those expected: names and positions."""
        seen = []

        def is_expected():
            seen[:] = [(row.name, row.position) for row in self.rows()]
            return seen and seen == expected(len(seen))

        try:
            wait_for("rows in sight", is_expected)
        except Unmet as unmet:
            raise Unmet(f"{unmet}; got {seen}") from None

    def progress(self):
        """The fractions that progress bars show, from top to bottom."""
        bars = [node for node in tree.descendants(self.window())
                if node.get_role() == Role.PROGRESS_BAR]
        return [bar.get_current_value() / (bar.get_maximum_value() or 1) for bar in bars]

    def await_progress(self):
        """Waits until the file at work is between its start and its end."""

        def is_between():
            fractions = self.progress()
            return fractions and 0 < fractions[-1] < 1

        wait_for("progress", is_between)

    # Doing

    def press(self, name):
        """As assistive technology presses a button."""
        tree.act(self.button(name), "Press", "Toggle")

    def click(self, name):
        input.click(self.button(name))

    def key(self, *combinations):
        """Presses keys one after the other, once a window of the program has the keyboard."""
        input.await_keyboard(self.pid)
        input.key(*combinations)

    def type_text(self, text):
        input.await_keyboard(self.pid)
        input.type_text(text)

    def command(self, name):
        """Gives a command of the menu, as assistive technology does."""
        item = wait_for(f'command "{name}"', lambda: self.find(Role.MENU_ITEM, name, hidden=True))
        tree.act(item, "Press")

    def fill_panel(self, panel, *paths):
        """Types the paths into the panel that is open or about to open, and confirms."""
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

    def listed_bit_depth(self, depth):
        """The item of the open list; None while the list is closed."""
        return next((item for window in self.windows()
                     for item in [tree.find(window, Role.LIST_ITEM, depth)] if item), None)

    def open_bit_depths(self, depth):
        """Opens the list by mouse; the item of that depth."""
        picker = wait_for("bit depth", lambda: self.find(Role.COMBO_BOX))
        wait_for("a bit depth that can be picked", lambda: tree.is_enabled(picker))

        def open_list():
            # A click that takes long is one that opens the list and picks what was picked already.
            input.click(picker)
            try:
                return wait_for(f'item "{depth}"', lambda: self.listed_bit_depth(depth), seconds=2)
            except Unmet:
                return None

        return wait_for("open list", open_list)

    def pick_bit_depth(self, depth):
        """From the list that the mouse opens."""
        picker = wait_for("bit depth", lambda: self.find(Role.COMBO_BOX))
        if tree.name_of(picker) != depth:
            input.click(self.open_bit_depths(depth))
            wait_for(f"bit depth {depth}", lambda: self.find(Role.COMBO_BOX, depth))

    def convert(self, destination, *files):
        """Queues the files, chooses the folder for what is made of them, and starts."""
        self.add_files(*files)
        self.choose_destination(destination)
        self.press("Convert 1 File" if len(files) == 1 else f"Convert {len(files)} Files")

    def focus(self):
        """What has the keyboard focus, in the window or a panel: the innermost that claims it."""
        focused = None
        for window in self.windows():
            for node in tree.descendants(window):
                if tree.has_state(node, State.FOCUSED):
                    focused = node
        return focused

    # Ending

    def children(self):
        return processes.children(self.pid)

    def await_end(self, seconds=SECONDS):
        """The exit status, once the program has ended by itself."""
        try:
            return self.process.wait(seconds)
        except subprocess.TimeoutExpired:
            raise Unmet(f"the program did not end within {seconds} s") from None

    def ask_to_quit(self):
        """By the menu's command."""
        try:
            self.command("Quit")
        except GLib.Error:  # The program may be gone before it has answered.
            pass

    def quit(self):
        """By the menu's command; the program must report success."""
        self.ask_to_quit()
        status = self.await_end()
        if status != 0:
            raise Unmet(f"the program ended with status {status}")

    def kill(self):
        if self.process.poll() is None:
            self.process.send_signal(signal.SIGKILL)
            self.process.wait()


def environment_with(changes):
    """This process's environment with some variables set, or taken out where they are None."""
    result = {**os.environ, **{key: value for key, value in changes.items() if value is not None}}
    for variable, value in changes.items():
        if value is None:
            result.pop(variable, None)
    return result
