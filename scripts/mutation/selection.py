"""Samples mutants at random from every file that has code, reproducibly for the same seed."""

import itertools
import random


def sampled(mutants, seed):
    """Returns one file's mutants in a random order that alternates between those by meaning and the others, and
    takes one per line before it takes a second of any line."""
    mutants = list(mutants)
    if not mutants:
        return []
    generator = random.Random(f"{seed}:{mutants[0].path}")
    generator.shuffle(mutants)
    kinds = [[mutant for mutant in mutants if mutant.is_by_meaning is is_by_meaning] for is_by_meaning in (True, False)]
    generator.shuffle(kinds)
    kinds = [one_per_line_first(kind) for kind in kinds]
    return [mutant for pair in itertools.zip_longest(*kinds) for mutant in pair if mutant]


def one_per_line_first(mutants):
    count_by_line = {}
    rounds = []
    for order, mutant in enumerate(mutants):
        number = count_by_line[mutant.line] = count_by_line.get(mutant.line, 0) + 1
        rounds.append((number, order, mutant))
    return [mutant for _, _, mutant in sorted(rounds)]


def quotas(files, count):
    """Returns by path how many mutants to take: in proportion to the lines that have one, and at least one.

    `files` has lists of mutants by path.
    """
    files = {path: mutants for path, mutants in files.items() if mutants}
    weights = {path: len({mutant.line for mutant in mutants}) for path, mutants in files.items()}
    result = {path: 1 for path in files}
    while sum(result.values()) < min(count, sum(map(len, files.values()))):
        open_paths = [path for path in files if result[path] < len(files[path])]
        # The file furthest below its proportion.
        result[min(open_paths, key=lambda path: ((result[path] + 0.5) / weights[path], path))] += 1
    return result
