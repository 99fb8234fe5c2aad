"""What the program announces to a screen reader."""

from driver import tree
from driver.tree import Atspi, Role
from driver.waiting import wait_equal


class Announcements:
    """Records announcements from construction on; events are delivered while a wait runs the main context."""

    def __init__(self):
        self.texts = []
        # Held: AT-SPI drops a listener with its last reference.
        self._listener = Atspi.EventListener.new(self._record)
        self._listener.register("object:state-changed:showing")

    def _record(self, event):
        if event.detail1 and event.source and event.source.get_role() == Role.NOTIFICATION:
            self.texts.append(tree.name_of(event.source))

    def await_texts(self, expected):
        wait_equal("announcements", lambda: self.texts, expected)
