"""The rows of the table of results."""

import dataclasses


@dataclasses.dataclass(frozen=True)
class Row:
    """A figure with its floor and its goal; `floor` is None without a floor."""

    name: str
    unit: str
    floor: float | None
    measured: float
    # The goal as text, and whether it was met; None without a goal.
    goal: str | None
    met: bool | None

    @property
    def ratio(self):
        return None if not self.floor else self.measured / self.floor

    def as_json(self):
        return {"name": self.name, "unit": self.unit, "floor": self.floor, "measured": self.measured,
                "ratio": self.ratio, "goal": self.goal, "met": self.met}


def at_most_times(name, unit, floor, measured, times):
    """A row whose goal is a ratio."""
    return Row(name, unit, floor, measured, f"at most {times} times", measured <= times * floor)


def at_most(name, unit, measured, limit):
    """A row without a floor."""
    return Row(name, unit, None, measured, f"at most {limit} {unit}", measured <= limit)


def _number(value):
    if value is None:
        return "-"
    return f"{value:,.0f}" if abs(value) >= 10_000 else f"{value:.4g}"


def print_table(rows):
    """Prints the rows as a Markdown table."""
    heads = ["What", "Unit", "Floor", "Measured", "Ratio", "Goal", "Met"]
    lines = [[row.name, row.unit, _number(row.floor), _number(row.measured),
              "-" if row.ratio is None else f"{row.ratio:.3f}", row.goal or "-",
             {True: "yes", False: "NO", None: "-"}[row.met]] for row in rows]
    widths = [max(len(line[column]) for line in [heads, *lines]) for column in range(len(heads))]
    for line in [heads, ["-" * width for width in widths], *lines]:
        print("| " + " | ".join(text.ljust(width) for text, width in zip(line, widths)) + " |")
