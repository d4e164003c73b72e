"""Horalo on a desktop of its own, beside a bare program that has what every such program needs.

Both are measured in turn, so that whatever else the machine does falls on both, and each round waits
for a quiet moment; figures are medians.
"""

import os
import pathlib
import shutil
import statistics
import sys
import time

from machine import QuietMachine
from table import Row

ROOT = pathlib.Path(__file__).resolve().parent.parent
sys.path.append(str(ROOT / "tests" / "session"))

# pylint: disable=wrong-import-position
import program
import screen
from desktop import Desktop
from processes import end, marked, run, start, until

STARTS, FIRST_USES, LATER_USES, SHOWS, COPIES = 21, 11, 5, 8, 9
KEYS = "1704067200"
BELOW_THE_INPUT = 80  # pixels from the window's top
IDLE = 10  # seconds
# How often a refresh of the rows wakes the threads of a program: the timer, the painting and what
# the X server answers, twice if two of them fall into the time.
REFRESH = 8
TOAST = "Horalo Conversion Toast"
# The clipboard is looked at each 0.3 s, and a toast may take 40 ms to make.
MOST_TO_TOAST = 340


class Probe:
    """The stopwatch; each answer is a list of milliseconds."""

    def __init__(self, path):
        self.path = str(path)

    def ask(self, *words):
        answer = run(self.path, *words, seconds=60)
        if answer.returncode:
            raise SystemExit(f"latency_probe {' '.join(words)}: {answer.stderr.strip()}")
        return [float(word) for word in answer.stdout.split()]

    def painted(self, verb, what, title):
        return self.ask(verb, what, title)[0]


class Candidate:
    """A program under measurement, with the titles of its windows."""

    def __init__(self, probe, command, title, second):
        self.probe, self.command, self.title, self.second = probe, command, title, second
        self.process = None

    def start(self):
        self.process = start(*self.command)
        self.probe.ask("grabbed")
        settle(self.process.pid)

    def end(self):
        end(self.process)

    def time_start(self):
        return self.probe.ask("start", *self.command)[0]

    def show(self):
        time_taken = self.probe.painted("press", "shortcut", self.title)
        until(lambda: screen.focused() == self.title)
        return time_taken

    def hide(self):
        screen.press_shortcut()
        until(lambda: not screen.windows(self.title))
        settle(self.process.pid)

    def type(self):
        screen.key("ctrl+a", "BackSpace")
        settle(self.process.pid)
        return self.probe.ask("type", KEYS, self.title, str(BELOW_THE_INPUT))

    def open_second(self):
        return self.probe.painted("press", "settings", self.second)

    def use_once(self):
        """The first show, the memory after it, the first opening of the second window."""
        self.start()
        first_show = self.show()
        self.type()
        self.hide()
        memory = pss(self.process.pid)
        self.show()
        second = self.open_second()
        self.end()
        return first_show, memory, second

    def use_often(self):
        """Each of the later shows, and each key."""
        self.start()
        self.show()
        keys = self.type()
        self.hide()
        shows = []
        for _ in range(SHOWS):
            shows.append(self.show())
            self.hide()
        self.end()
        return shows, keys


def pss(pid):
    """The memory of a process, shared parts counted by their share, in KiB."""
    for line in pathlib.Path(f"/proc/{pid}/smaps_rollup").read_text(encoding="ascii").splitlines():
        if line.startswith("Pss:"):
            return int(line.split()[1])
    raise SystemExit("the system does not tell the memory of a process")


def switches(pid):
    """How often the threads of a process have gone to sleep so far."""
    total = 0
    for status in pathlib.Path(f"/proc/{pid}/task").glob("*/status"):
        for line in status.read_text(encoding="utf-8").splitlines():
            if line.startswith("voluntary_ctxt_switches:"):
                total += int(line.split()[1])
    return total


def processor_time(pid):
    """The seconds that the threads of a process have run so far."""
    return sum(int(stat.read_text(encoding="ascii").split()[0])
               for stat in pathlib.Path(f"/proc/{pid}/task").glob("*/schedstat")) / 1e9


def settle(pid):
    """Waits until a process has done nothing for a while."""
    def is_still():
        before = switches(pid)
        time.sleep(0.15)
        return switches(pid) == before

    until(is_still, 5)


def idle(pid):
    """Wake-ups, and the processor time as a share of one core, while nothing happens."""
    settle(pid)
    count, used = switches(pid), processor_time(pid)
    time.sleep(IDLE)
    return switches(pid) - count, (processor_time(pid) - used) / IDLE


def in_turn(machine, candidates, rounds, measure):
    """What `measure` gave for each candidate in each round, as one list a candidate."""
    def quietly(candidate):
        machine.wait()
        return measure(candidate)

    return list(zip(*[[quietly(candidate) for candidate in candidates] for _ in range(rounds)]))


def medians(columns):
    return [statistics.median(column) for column in columns]


def latency(machine, horalo, bare):
    for candidate in (horalo, bare):  # once to have all files in memory
        candidate.time_start()
    starts = medians(in_turn(machine, (horalo, bare), STARTS, Candidate.time_start))
    rows = [Row("start to shortcut active", *starts, "ms", "a bare program", 1.5)]

    uses = in_turn(machine, (horalo, bare), FIRST_USES, Candidate.use_once)
    first, memory, second = zip(*(medians(zip(*one)) for one in uses))
    often = in_turn(machine, (horalo, bare), LATER_USES, Candidate.use_often)
    shows = medians([sum((shows for shows, _ in one), []) for one in often])
    keys = medians([sum((keys for _, keys in one), []) for one in often])
    rows += [
        Row("shortcut to painted, first", *first, "ms", "a bare program", 2.5),
        Row("shortcut to painted, later", *shows, "ms", "a bare program", 2.5),
        Row("typed key to rows painted", keys[0], keys[1] + 4, "ms", "a bare echo and 4 ms", 1),
        Row("settings opened, first", *second, "ms", "a second window, bare", 3),
        Row("memory after first use", *memory, "KiB", "a bare program", 1.4),
    ]
    return rows, memory[0]


def copyq_memory():
    """The memory of a clipboard manager's processes together, or None where it is not installed."""
    if not shutil.which("copyq"):
        return None
    server = start("copyq")
    try:
        def processes():
            named = run("pgrep", "-x", "copyq").stdout.split()
            return [int(pid) for pid in named if int(pid) in marked()]

        if not until(lambda: len(processes()) >= 2 and run("copyq", "show").returncode == 0, 20):
            raise SystemExit("CopyQ does not start")
        run("copyq", "hide")
        pids = processes()
        for pid in pids:
            settle(pid)
        return sum(map(pss, pids))
    finally:
        run("copyq", "exit")
        end(server)


def idle_when_shown(candidate):
    candidate.start()
    candidate.show()
    candidate.type()
    return idle(candidate.process.pid)[0]


def idle_rows(machine, horalo, bare):
    bare_shown = idle_when_shown(bare)
    bare.end()
    shown = idle_when_shown(horalo)
    horalo.hide()
    closed, _ = idle(horalo.process.pid)
    horalo.end()

    program.set_preferences(clipboardMonitorEnabled=True)
    horalo.start()
    watching, share = idle(horalo.process.pid)
    times = []
    for i in range(COPIES):
        machine.wait()
        times.append(horalo.probe.painted("copy", str(1_704_067_200 + i), TOAST))
        until(lambda: not screen.windows(TOAST), 20)
    horalo.end()
    program.forget_everything()
    allowed = "what is allowed"
    return [
        Row(f"wake-ups in {IDLE} s, panel closed", closed, 0, "", allowed, 1),
        # The caret blinks in either; a date long past is shown anew each 10 s.
        Row(f"wake-ups in {IDLE} s, a result shown", shown, bare_shown + REFRESH, "",
            "a bare caret and a refresh", 1),
        Row(f"wake-ups in {IDLE} s, watching", watching, 5 * IDLE, "", allowed, 1),
        Row("processor time, watching", share * 100, 0.2, "%", allowed, 1),
        Row("copy to toast painted, slowest", max(times), MOST_TO_TOAST, "ms", allowed, 1),
    ]


def measure(build):
    before = dict(os.environ)
    desktop = Desktop(tray=True, accessibility=False)
    try:
        probe = Probe(build / "bench" / "latency_probe")
        horalo = Candidate(probe, [str(build / "horalo"), "--background"], "Horalo",
                           "Horalo Settings")
        bare = Candidate(probe, [str(build / "bench" / "bare")], "Bare", "Bare Second")
        machine = QuietMachine()
        rows, memory = latency(machine, horalo, bare)
        rows += idle_rows(machine, horalo, bare)
        if machine.disturbed:
            print(machine.complaint(), file=sys.stderr)
        peer = copyq_memory()
        if peer:
            rows.append(Row("memory after first use", memory, peer, "KiB", "CopyQ", 0.75))
        return rows
    finally:
        desktop.end()
        os.environ.clear()
        os.environ.update(before)
