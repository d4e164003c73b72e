"""The same things again and again: neither memory nor file handles nor windows may grow.

HORALO_TEST_ROUNDS tells how many cycles: the more, the smaller a leak that is found."""
import os
import pathlib

import case
import screen
from case import SessionTest
from processes import run, until

CYCLES = int(os.environ.get("HORALO_TEST_ROUNDS", "100"))
# What is made once, on first use, is there after so many.
WARM_UP = max(10, CYCLES // 10)
# The allocator's own unrest; 2,000 cycles that leak 1 KiB each are well above it.
MOST_GROWTH = 1024  # KiB


class SoakTest(SessionTest):
    def own_memory(self):
        """In KiB, without the pages of files, which come and go with what other programs load."""
        rollup = pathlib.Path("/proc/%d/smaps_rollup" % self.program.process.pid).read_text()
        return next(int(line.split()[1]) for line in rollup.splitlines()
                    if line.startswith("Anonymous:"))

    def handles(self):
        """What the open files of the program are, in order."""
        folder = "/proc/%d/fd" % self.program.process.pid
        return sorted(os.readlink(os.path.join(folder, name)) for name in os.listdir(folder))

    @staticmethod
    def windows():
        """How many windows there are on the display, visible or not."""
        return sum(1 for line in run("xwininfo", "-root", "-tree").stdout.splitlines()
                   if line.strip().startswith("0x"))

    def repeat(self, cycle):
        for number in range(WARM_UP):
            cycle(number)
        memory, handles, windows = self.own_memory(), self.handles(), self.windows()
        for number in range(WARM_UP, WARM_UP + CYCLES):
            cycle(number)
        until(lambda: len(self.handles()) <= len(handles) and self.windows() <= windows)
        now = self.own_memory(), self.handles(), self.windows()
        print("%d cycles: memory %d -> %d KiB, handles %d -> %d, windows %d -> %d"
              % (CYCLES, memory, now[0], len(handles), len(now[1]), windows, now[2]))
        self.assertLessEqual(now[0], memory + MOST_GROWTH, "the memory grows")
        self.assertLessEqual(len(now[1]), len(handles), (handles, now[1]))
        self.assertLessEqual(now[2], windows, "windows are left")

    def test_open_type_copy_close(self):
        def cycle(number):
            text = str(1_704_067_200 + number)
            run("xdotool", "key", "shift+super+e", "search", "--sync", "--onlyvisible", "--name",
                "^Horalo$", "key", "--window", "0", "ctrl+a", "type", "--window", "0", "--delay",
                "1", text)
            screen.key("Return")
            self.eventually_equal(text, screen.clipboard)
            self.wait_for_no_panel()
        self.repeat(cycle)


if __name__ == "__main__":
    case.main()
