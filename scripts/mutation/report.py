"""Collects and prints the verdicts on the mutants."""

import os
import threading

KINDS = ["caught", "timed out", "survived", "equivalent", "not built", "unchanged"]


def score(results):
    """Returns the percentage caught of the mutants that a test can catch; a time-out counts as caught."""
    kinds = [verdict.kind for _, verdict, _ in results]
    caught = kinds.count("caught") + kinds.count("timed out")
    tried = caught + kinds.count("survived")
    return 100.0 * caught / tried if tried else 100.0


class Tally:
    """The results so far; add() is thread-safe."""

    def __init__(self):
        self.lock = threading.Lock()
        self.results = []

    def add(self, mutant, verdict, seconds):
        with self.lock:
            self.results.append((mutant, verdict, seconds))
            print(f"{len(self.results):4} {verdict.kind:10} {seconds:5.1f} s  {mutant.id}  {verdict.by}")

    def row(self, name, results):
        """Returns one line of the table: how many of each kind, the score, and the mean seconds a mutant."""
        counts = "".join(f"{sum(verdict.kind == kind for _, verdict, _ in results):11}" for kind in KINDS)
        seconds = sum(seconds for _, _, seconds in results) / max(1, len(results))
        return f"{name:<18}{counts}{score(results):8.1f} %{seconds:8.1f}"

    def of_folder(self, folder):
        return [result for result in self.results if os.path.dirname(result[0].path) == folder]

    def folders(self):
        """Returns the folders that have results."""
        return sorted({os.path.dirname(mutant.path) for mutant, _, _ in self.results})

    def lowest_score(self):
        return min((score(self.of_folder(folder)) for folder in self.folders()), default=0.0)

    def report(self):
        lines = [f"{'folder':<18}" + "".join(f"{kind:>11}" for kind in KINDS) + f"{'score':>10}{'seconds':>8}"]
        for folder in self.folders():
            lines.append(self.row(folder, self.of_folder(folder)))
        lines.append(self.row("all", self.results))
        for name, is_by_meaning in (("by meaning", True), ("others", False)):
            lines.append(self.row(name, [result for result in self.results
                                         if result[0].is_by_meaning is is_by_meaning]))
        for kind in ("survived", "equivalent", "timed out", "not built", "unchanged", "caught"):
            chosen = sorted(self.results_of(kind), key=lambda result: result[0].place)
            if chosen:
                lines += ["", f"{kind}:"]
            for mutant, verdict, _ in chosen:
                lines.append(f"{mutant.id}  {verdict.by}".rstrip())
                if kind in ("survived", "equivalent"):
                    lines += [f"  - {mutant.before}", f"  + {mutant.after}"]
        lines += ["", f"mutate: {score(self.results):.1f} % caught, {self.lowest_score():.1f} % in the worst folder"]
        return "\n".join(lines) + "\n"

    def results_of(self, kind):
        return [result for result in self.results if result[1].kind == kind]
