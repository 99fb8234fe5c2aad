"""Collects and prints the verdicts on the mutants."""

import threading

KINDS = ["caught", "timed out", "survived", "not built", "unchanged"]


class Tally:
    """The results so far; add() is thread-safe."""

    def __init__(self):
        self.lock = threading.Lock()
        self.results = []

    def add(self, mutant, verdict, seconds):
        with self.lock:
            self.results.append((mutant, verdict, seconds))
            print(f"{len(self.results):4} {verdict.kind:9} {seconds:5.1f} s  {mutant.id}  {verdict.by}")

    def count(self, kind, folder=""):
        return sum(mutant.path.startswith(folder) for mutant, _, _ in self.results_of(kind))

    def score(self, folder=""):
        """Returns the percentage caught of the mutants that ran; a time-out counts as caught."""
        caught = self.count("caught", folder) + self.count("timed out", folder)
        tried = caught + self.count("survived", folder)
        return 100.0 * caught / tried if tried else 0.0

    def report(self):
        lines = [f"{'folder':<10}" + "".join(f"{kind:>11}" for kind in KINDS) + f"{'score':>10}"]
        for folder in sorted({mutant.path.split("/")[0] + "/" for mutant, _, _ in self.results}) + [""]:
            counts = "".join(f"{self.count(kind, folder):11}" for kind in KINDS)
            lines.append(f"{folder.strip('/') or 'all':<10}{counts}{self.score(folder):8.1f} %")
        for kind in ("survived", "timed out", "not built", "unchanged", "caught"):
            chosen = sorted(self.results_of(kind), key=lambda result: result[0].place)
            if chosen:
                lines += ["", f"{kind}:"]
            for mutant, verdict, _ in chosen:
                lines.append(f"{mutant.id}  {verdict.by}".rstrip())
                if kind == "survived":
                    lines += [f"  - {mutant.before}", f"  + {mutant.after}"]
        seconds = [seconds for _, _, seconds in self.results]
        if seconds:
            lines += ["", f"{sum(seconds) / len(seconds):.1f} s a mutant, {max(seconds):.1f} s at most"]
        lines.append(f"mutate: {self.score():.1f} % caught")
        return "\n".join(lines) + "\n"

    def results_of(self, kind):
        return [result for result in self.results if result[1].kind == kind]
