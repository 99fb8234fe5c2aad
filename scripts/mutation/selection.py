"""Which mutants are tried: drawn by chance, the same for the same seed, from every file that has code."""

import random


def drawn(mutants, seed):
    """One file's mutants in the order in which they are tried: no line twice before every line had one."""
    mutants = list(mutants)
    if mutants:
        random.Random(f"{seed}:{mutants[0].path}").shuffle(mutants)
    seen = {}
    turns = []
    for order, mutant in enumerate(mutants):
        turn = seen[mutant.line] = seen.get(mutant.line, 0) + 1
        turns.append((turn, order, mutant))
    return [mutant for _, _, mutant in sorted(turns)]


def shares(files, count):
    """How many mutants each file gives, by how many of its lines have one; every file at least one.

    Takes lists of mutants by path.
    """
    files = {path: mutants for path, mutants in files.items() if mutants}
    weights = {path: len({mutant.line for mutant in mutants}) for path, mutants in files.items()}
    result = {path: 1 for path in files}
    while sum(result.values()) < min(count, sum(map(len, files.values()))):
        open_paths = [path for path in files if result[path] < len(files[path])]
        # To the file that is the furthest behind.
        result[min(open_paths, key=lambda path: ((result[path] + 0.5) / weights[path], path))] += 1
    return result
