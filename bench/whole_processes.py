"""Whole processes beside the tools that people convert dates with in a terminal."""

import datetime
import os
import pathlib
import random
import re
import statistics
import subprocess
import tempfile
import time

from table import Row

MANY, FEW = 1_000_000, 10_000
ROUNDS_OF_MANY, ROUNDS_OF_ONE = 5, 101
ENVIRONMENT = {**os.environ, "TZ": "UTC", "LC_ALL": "C.UTF-8"}
ISO = "%Y-%m-%dT%H:%M:%SZ"


def run(command, stdin=os.devnull, stdout=os.devnull):
    """The seconds that a process takes, which must succeed."""
    actions = [(os.POSIX_SPAWN_OPEN, 0, str(stdin), os.O_RDONLY, 0),
               (os.POSIX_SPAWN_OPEN, 1, str(stdout), os.O_WRONLY | os.O_CREAT | os.O_TRUNC, 0o600)]
    start = time.perf_counter()
    process = os.posix_spawnp(command[0], command, ENVIRONMENT, file_actions=actions)
    _, status = os.waitpid(process, 0)
    seconds = time.perf_counter() - start
    if status:
        raise SystemExit(f"{command} failed with {status}")
    return seconds


def peak_memory(command, stdin, output):
    """The most memory in KiB that a process had in use by the time it had answered a whole file."""
    lines = stdin.read_bytes()
    answered = lines.count(b"\n") * len("1970-01-01T00:00:00Z\n")
    with output.open("wb") as out, subprocess.Popen(command, stdin=subprocess.PIPE, stdout=out,
                                                    env=ENVIRONMENT) as process:
        process.stdin.write(lines)
        process.stdin.flush()
        while output.stat().st_size < answered and process.poll() is None:
            time.sleep(0.001)
        status = pathlib.Path(f"/proc/{process.pid}/status").read_text(encoding="ascii")
        process.stdin.close()
    return int(re.search(r"VmHWM:\s*(\d+) kB", status).group(1))


def interleaved(runs, rounds):
    """The median seconds of each of some functions, run in turn so that all see the same machine."""
    for one in runs:
        one()
    times = [[one() for one in runs] for _ in range(rounds)]
    return [statistics.median(column) for column in zip(*times)]


class Files:
    """The same instants in the forms that the tools read, each line its own."""

    def __init__(self, folder):
        self.folder = pathlib.Path(folder)
        chosen = random.Random(1)
        seconds = [chosen.randrange(0, 4_102_444_800) for _ in range(MANY)]
        epoch = datetime.datetime(1970, 1, 1)
        dates = [(epoch + datetime.timedelta(seconds=s)).strftime(ISO) for s in seconds]
        self.seconds = self.write("seconds", map(str, seconds))
        self.few_seconds = self.write("few", map(str, seconds[:FEW]))
        self.at_seconds = self.write("at-seconds", (f"@{s}" for s in seconds))
        self.dates = self.write("dates", dates)
        self.output = self.folder / "output"

    def write(self, name, lines):
        path = self.folder / name
        path.write_text("".join(f"{line}\n" for line in lines), encoding="ascii")
        return path

    def expect_dates(self, command, stdin):
        """A tool that prints something else than the dates is no peer."""
        run(command, stdin, self.output)
        if self.output.read_bytes() != self.dates.read_bytes():
            raise SystemExit(f"{command} prints something else")


def million_lines(files, horalo, what, stdin, dconv, date):
    """Three rows' worth of one million lines, from tools that print the very same."""
    horalo = [horalo, "convert", "--only", "iso"]
    for command, file in ((horalo, stdin), (dconv, stdin), (date, os.devnull)):
        files.expect_dates(command, file)
    ours, dconv_time, date_time = interleaved(
        [lambda: run(horalo, stdin), lambda: run(dconv, stdin), lambda: run(date)], ROUNDS_OF_MANY)
    what = f"1,000,000 lines of {what}"
    return [Row(what, ours * 1000, dconv_time * 1000, "ms", "dateutils.dconv", 1),
            Row(what, ours * 1000, date_time * 1000, "ms", "GNU date -f", 1 / 3)]


def measure(build):
    horalo = str(build / "horalo")
    with tempfile.TemporaryDirectory() as folder:
        files = Files(folder)
        rows = million_lines(files, horalo, "Unix seconds", files.seconds,
                             ["dateutils.dconv", "-i", "%s", "-f", ISO],
                             ["date", "-u", "-f", str(files.at_seconds), f"+{ISO}"])
        rows += million_lines(files, horalo, "ISO 8601", files.dates,
                              ["dateutils.dconv", "-i", ISO, "-f", ISO],
                              ["date", "-u", "-f", str(files.dates), f"+{ISO}"])
        memory = [peak_memory([horalo, "convert", "--only", "iso"], file, files.output)
                  for file in (files.seconds, files.few_seconds)]
        rows.append(Row("memory for 1,000,000 lines", *memory, "KiB", "for 10,000", 1.05))
    ours, peer = interleaved([lambda: run([horalo, "convert", "1704067200"]),
                              lambda: run(["date", "-u", "-d", "@1704067200"])], ROUNDS_OF_ONE)
    rows.append(Row("one short text, five rows", ours * 1000, peer * 1000, "ms", "GNU date -d", 6))
    return rows
