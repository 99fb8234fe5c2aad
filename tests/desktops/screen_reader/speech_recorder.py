"""A speech server for Orca that writes what it is told to say to a file, one JSON object a line.

RECORDED_SPEECH names the file. Orca loads this module by its name, from its settings.
"""

import json
import os
import time

from orca import chnames, speechserver


class SpeechServer(speechserver.SpeechServer):
    _server = None

    @staticmethod
    def getFactoryName():
        return "Recorder"

    @classmethod
    def getSpeechServer(cls, info=None):
        if cls._server is None:
            cls._server = cls()
        return cls._server

    @classmethod
    def getSpeechServers(cls):
        return [cls.getSpeechServer()]

    @classmethod
    def shutdownActiveServers(cls):
        cls._server = None

    def __init__(self):
        super().__init__()
        self._file = open(os.environ["RECORDED_SPEECH"], "a", encoding="utf-8")

    def _record(self, kind, text=""):
        self._file.write(json.dumps({"time": time.monotonic(), "kind": kind, "text": text}) + "\n")
        self._file.flush()

    def getInfo(self):
        return ["Recorder", "recorder"]

    def getVoiceFamilies(self):
        return []

    def speak(self, text=None, acss=None, interrupt=True):
        if isinstance(text, str) and text.strip():
            self._record("say", text)

    def speakCharacter(self, character, acss=None):
        self._record("say", chnames.getCharacterName(character))

    def speakKeyEvent(self, event, acss=None):
        self._record("key", event.getKeyName())

    def sayAll(self, utteranceIterator, progressCallback):
        for context, _ in utteranceIterator:
            self._record("say", context.utterance)

    def stop(self):
        self._record("stop")
