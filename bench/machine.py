"""Whether the machine has anything else to do: what is timed beside that takes too long."""

import time

LOOK = 0.2  # seconds
MOST_BUSY = 0.1  # of all processors
PATIENCE = 120  # seconds of waiting for a quiet machine, all rounds together


def busy():
    """The share of all processors that is in use while this program waits."""
    before = _processor_times()
    time.sleep(LOOK)
    spent = [now - then for now, then in zip(_processor_times(), before)]
    resting = spent[3] + spent[4]
    return 1 - resting / sum(spent) if sum(spent) else 0.0


def _processor_times():
    with open("/proc/stat", encoding="ascii") as file:
        return [int(word) for word in file.readline().split()[1:9]]


class QuietMachine:
    """Lets a round of measuring begin when nothing else runs, and tells how often that failed."""

    def __init__(self):
        self.rounds = self.disturbed = 0
        self.patience = PATIENCE

    def wait(self):
        begun = time.monotonic()
        share = busy()
        while share > MOST_BUSY and time.monotonic() - begun < self.patience:
            share = busy()
        self.patience = max(0.0, self.patience - (time.monotonic() - begun - LOOK))
        self.rounds += 1
        self.disturbed += share > MOST_BUSY

    def complaint(self):
        """One line, or nothing where all was well."""
        if not self.disturbed:
            return ""
        return (f"{self.disturbed} of {self.rounds} rounds began while the machine was busy with "
                "something else: times are too long, run it again")
