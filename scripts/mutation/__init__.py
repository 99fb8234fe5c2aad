"""The parts of scripts/mutate."""
