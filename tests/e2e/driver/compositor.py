"""A Wayland desktop that nobody sees."""

import os
import pathlib
import subprocess

from driver import processes
from driver.waiting import wait_for

NAME = "kestrel-e2e"
# With these, a program finds no other display. The compositor has no keyboard, and the input method for
# Wayland of Qt 6.4, unlike that of Qt 6.8 and 6.11, crashes without one: it is replaced by Qt's plain one.
ENVIRONMENT = {
    "QT_QPA_PLATFORM": "wayland",
    "WAYLAND_DISPLAY": NAME,
    "DISPLAY": None,
    "QT_IM_MODULE": "compose",
}


class Compositor:
    """Started at once. `kill` ends it."""

    def __init__(self, session, width=1400, height=900):
        log = session.folder / "compositor.log"
        self.process = subprocess.Popen(
            ["weston", "--backend=headless-backend.so", f"--socket={NAME}", f"--width={width}",
             f"--height={height}", "--idle-time=0", "--no-config", f"--log={log}"],
            stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        session.helpers.append(self)
        socket = pathlib.Path(os.environ["XDG_RUNTIME_DIR"]) / NAME
        wait_for("compositor", socket.exists)

    def kill(self):
        own = processes.children(self.process.pid)
        if self.process.poll() is None:
            self.process.terminate()
        self.process.wait()
        # Orphans come to this process.
        for pid in own:
            os.waitpid(pid, 0)
