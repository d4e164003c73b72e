"""Rows of figures, and how they are printed."""

import math
from dataclasses import dataclass


@dataclass
class Row:
    """Ours beside a peer's, both in the same unit, and the ratio that ours may have at most."""
    what: str
    ours: float
    peer: float
    unit: str
    against: str
    target: float

    @property
    def ratio(self):
        if self.peer == 0:
            return math.inf if self.ours else 0.0
        return self.ours / self.peer

    @property
    def reached(self):
        return self.ratio <= self.target

    def cells(self):
        def number(value):
            return f"{value:,.{0 if value >= 100 else 1 if value >= 10 else 2}f} {self.unit}"
        return (self.what, number(self.ours), number(self.peer), self.against, f"{self.ratio:.3f}",
                f"{self.target:.3g}", "" if self.reached else "MISSED")


def print_table(rows):
    head = ("", "Horalo", "beside", "which is", "ratio", "at most", "")
    table = [head] + [row.cells() for row in rows]
    widths = [max(len(cells[i]) for cells in table) for i in range(len(head))]
    for cells in table:
        left = [0, 3, 6]
        print("  ".join(cell.ljust(width) if i in left else cell.rjust(width)
                        for i, (cell, width) in enumerate(zip(cells, widths))).rstrip())
