"""The modules of scripts/mutate."""
