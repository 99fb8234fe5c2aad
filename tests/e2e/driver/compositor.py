"""A headless Wayland compositor."""

import os
import pathlib
import subprocess

from driver import processes
from driver.waiting import wait_for

NAME = "kestrel-e2e"
# With these, a program finds no other display. The compositor has no keyboard, without which the Wayland input
# context of Qt 6.4 crashes, unlike those of Qt 6.8 and 6.11; Qt's compose input context replaces it.
ENVIRONMENT = {
    "QT_QPA_PLATFORM": "wayland",
    "WAYLAND_DISPLAY": NAME,
    "DISPLAY": None,
    "QT_IM_MODULE": "compose",
}


class Compositor:
    """Starts weston on construction; `kill` ends it."""

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
        # Orphans are reparented to this process, which must reap them.
        for pid in own:
            os.waitpid(pid, 0)
