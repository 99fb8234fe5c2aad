"""The scenarios by their names."""

import dataclasses
from typing import Callable


@dataclasses.dataclass
class Scenario:
    run: Callable
    is_long: bool
    display_size: str

    @property
    def label(self):
        return "e2e-long" if self.is_long else "e2e"


SCENARIOS = {}


def scenario(is_long=False, display_size="1400x900", name=None):
    """Registers a function of a Session as a scenario; the default name is the function's. `is_long` marks
    long conversions by the real ffmpeg and very large queues, not what the stand-in does."""

    def register(run):
        own_name = name or run.__name__.replace("_", "-")
        if own_name in SCENARIOS:
            raise ValueError(f"two scenarios are named {own_name}")
        SCENARIOS[own_name] = Scenario(run, is_long, display_size)
        return run

    return register
