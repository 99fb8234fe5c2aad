"""What the program announces to a screen reader."""

from driver import tree
from driver.tree import Atspi, Role
from driver.waiting import wait_equal


class Announcements:
    """Listens from now on; the texts come in while something is waited for."""

    def __init__(self):
        self.texts = []
        # Kept: the listener ends with its last reference.
        self._listener = Atspi.EventListener.new(self._take)
        self._listener.register("object:state-changed:showing")

    def _take(self, event):
        if event.detail1 and event.source and event.source.get_role() == Role.NOTIFICATION:
            self.texts.append(tree.name_of(event.source))

    def await_texts(self, expected):
        wait_equal("announcements", lambda: self.texts, expected)
