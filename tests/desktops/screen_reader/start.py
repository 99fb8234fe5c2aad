#!/usr/bin/python3
"""Starts Orca as /usr/bin/orca does, with settings for tests, beside other instances of the same user.

Usage: start.py LOG PREFERENCES
/usr/bin/orca refuses to start while another Orca of the user runs, whatever display it is on. LOG gets Orca's debug
output; PREFERENCES is the folder of its settings. RECORDED_SPEECH names the file for what it says; ORCA_SETTINGS has
settings in JSON.
"""

import json
import os
import sys

sys.dont_write_bytecode = True
sys.path.insert(0, os.path.dirname(os.path.abspath(__file__)))

from orca import debug  # noqa: E402

SETTINGS = {
    "speechServerFactory": "speech_recorder",
    "enableSpeech": True,
    # Only what the program causes is of interest.
    "enableKeyEcho": False,
    "enableBraille": False,
    "enableSound": False,
}


def main():
    log, preferences = sys.argv[1:]
    debug.debugLevel = debug.LEVEL_ALL
    debug.eventDebugLevel = debug.LEVEL_OFF
    debug.debugFile = open(log, "w", encoding="utf-8")
    from orca import orca

    manager = orca.getSettingsManager()
    manager.activate(preferences, {**SETTINGS, **json.loads(os.environ.get("ORCA_SETTINGS", "{}"))})
    return orca.main()


if __name__ == "__main__":
    sys.exit(main())
