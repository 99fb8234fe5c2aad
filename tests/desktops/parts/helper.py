"""Programs of a desktop that run beside Kestrel."""

import os
import signal
import subprocess

from driver import processes
from driver.program import environment_with
from driver.waiting import TIMEOUT


class Helper:
    """A program in the session's environment with the changes; None unsets a variable. `close` or `kill` ends it.

    Its home folder is not Kestrel's, and what it prints goes to a log in the session's folder."""

    def __init__(self, session, name, command, **environment):
        home = session.folder / "desktop-home"
        home.mkdir(exist_ok=True)
        self.name = name
        self.log = session.folder / f"{name}.log"
        with open(self.log, "ab") as log:
            self.process = subprocess.Popen(
                command, cwd=home, env=environment_with({"HOME": str(home), **environment}), stdin=subprocess.DEVNULL,
                stdout=log, stderr=log)
        session.helpers.append(self)

    @property
    def pid(self):
        return self.process.pid

    def close(self):
        """Asks it to end, and waits for it and its children."""
        own = processes.children(self.pid)
        if self.process.poll() is None:
            self.process.send_signal(signal.SIGTERM)
        try:
            self.process.wait(TIMEOUT)
        except subprocess.TimeoutExpired:
            pass
        self.kill(own)

    def kill(self, own=()):
        if self.process.poll() is None:
            own = processes.children(self.pid)
            self.process.kill()
        self.process.wait()
        # The session reaps the orphans.
        for pid in own:
            try:
                os.kill(pid, signal.SIGKILL)
            except ProcessLookupError:
                pass
