"""Reads the list of equivalent mutants: those that no test can catch, with the reason."""

import os

LIST = os.path.join(os.path.dirname(__file__), "equivalents.txt")


def read_equivalents(text):
    """Returns the reasons by path, line before and line after; throws ValueError if an entry is malformed."""
    result = {}
    for block in text.split("\n\n"):
        lines = [line for line in block.splitlines() if line and not line.startswith("#")]
        if not lines:
            continue
        if len(lines) != 4 or not lines[1].startswith("- ") or not lines[2].startswith("+ "):
            raise ValueError(f"not a path, a line before, a line after and a reason: {lines}")
        path, before, after, reason = lines
        result[path, before[2:], after[2:]] = reason
    return result


class Equivalents:
    def __init__(self, files):
        """`files` has lists of all mutants by path. Throws ValueError if an entry is not of one place in its file."""
        with open(LIST, encoding="utf-8") as stream:
            self.reasons = read_equivalents(stream.read())
        for path, before, after in self.reasons:
            changes = {(mutant.line, mutant.before, mutant.after) for mutant in files.get(path, [])}
            places = [line for line, *lines in changes if lines == [before, after]]
            if path in files and len(places) != 1:
                raise ValueError(f"{len(places)} mutants of {path} change:\n  {before}\nto\n  {after}")

    def reason(self, mutant):
        """Returns why no test can catch the mutant, or None."""
        return self.reasons.get((mutant.path, mutant.before, mutant.after))
