"""Orca on the session's display, with what it says."""

import dataclasses
import json
import pathlib
import subprocess
import sys

from driver.program import environment_with
from driver.waiting import Unmet, wait_for

from parts.idleness import await_idle

START = pathlib.Path(__file__).resolve().parent.parent / "screen_reader" / "start.py"
# Seconds per character of a fast voice.
PACE = 0.03


@dataclasses.dataclass
class Utterance:
    text: str
    # When Orca passed it to the voice, in seconds.
    time: float
    # Whether speech was stopped before a fast voice had finished it.
    is_cut: bool = False

    def __str__(self):
        return f"{self.text!r}{' (cut short)' if self.is_cut else ''}"


class ScreenReader:
    """Starts Orca, with the user's settings that are given, and waits until it listens; `close` or `kill` ends it."""

    def __init__(self, session, **settings):
        self._speech = session.folder / "speech"
        self._speech.touch()
        self._log = session.folder / "orca.log"
        self._read_until = 0
        # Its settings, and what it reads of the user's, are in a home folder of its own.
        home = session.folder / "orca-home"
        home.mkdir()
        output = open(session.folder / "orca-output.log", "wb")
        self.process = subprocess.Popen(
            [sys.executable, str(START), str(self._log), str(home / "preferences")],
            env=environment_with({"HOME": str(home), "RECORDED_SPEECH": str(self._speech),
                                  "ORCA_SETTINGS": json.dumps(settings)}),
            stdin=subprocess.DEVNULL, stdout=output, stderr=output)
        session.helpers.append(self)
        wait_for("screen reader", lambda: self._records())
        await_idle()

    def _records(self):
        if self.process.poll() is not None:
            raise Unmet(f"the screen reader has ended, status {self.process.returncode}")
        return [json.loads(line) for line in self._speech.read_text().splitlines(keepends=True)
                if line.endswith("\n")]

    def utterances(self):
        """What it has said since the last call."""
        records = self._records()
        new, self._read_until = records[self._read_until:], len(records)
        said, end = [], 0.0
        for record in new:
            if record["kind"] == "stop":
                for utterance in said:
                    utterance.is_cut |= utterance.end > record["time"]
                    utterance.end = min(utterance.end, record["time"])
                end = record["time"]
            elif record["kind"] == "say":
                utterance = Utterance(record["text"], record["time"])
                end = max(end, record["time"]) + PACE * len(record["text"])
                utterance.end = end
                said.append(utterance)
        return said

    def said(self):
        """What it has said since the last call, once nobody has anything left to do."""
        await_idle()
        return self.utterances()

    def debug_log(self):
        return self._log.read_text(errors="replace")

    def close(self):
        self.kill()

    def kill(self):
        if self.process.poll() is None:
            self.process.kill()
        self.process.wait()
