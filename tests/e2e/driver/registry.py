"""The scenarios by their names."""

import dataclasses
from typing import Callable


@dataclasses.dataclass
class Scenario:
    play: Callable
    is_long: bool
    display_size: str

    @property
    def label(self):
        return "e2e-long" if self.is_long else "e2e"


SCENARIOS = {}


def scenario(is_long=False, display_size="1400x900", name=None):
    """Makes a function of a session a scenario, named after the function unless a name is given. What keeps the real ffmpeg at work for long
    is long; scenarios that do the same with the stand-in are not."""

    def register(play):
        own_name = name or play.__name__.replace("_", "-")
        if own_name in SCENARIOS:
            raise ValueError(f"two scenarios are named {own_name}")
        SCENARIOS[own_name] = Scenario(play, is_long, display_size)
        return play

    return register
