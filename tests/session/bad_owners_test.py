"""Programs on the other side of the clipboard that do not behave: the program must not notice."""
import os
import signal
import subprocess
import time

import case
import screen
from processes import end, start
from toast_case import ToastCase

HUGE = "200000000"
BEHAVIOURS = (("bytes", "3137"),  # stopped
              ("dies",), ("dies-midway",), ("silent",), ("late", "1500"), ("no-text",),
              ("at-once", HUGE), ("pieces", HUGE), ("endless",), ("bytes", "31ff"))


def resident_memory(pid):
    """In MiB."""
    with open("/proc/%d/statm" % pid, encoding="ascii") as file:
        return int(file.read().split()[1]) * 4096 / 2**20


class BadOwnersTest(ToastCase):
    def owner(self, *words):
        process = start(os.environ["HORALO_BAD_OWNER"], *words, stdout=subprocess.PIPE)
        self.addCleanup(process.stdout.close)
        self.addCleanup(end, process)
        self.assertEqual(b"ready\n", process.stdout.readline())
        return process

    def test_the_program_answers_whatever_its_other_side_does(self):
        pid = self.program.process.pid
        self.copy_and_wait()
        self.wait_for_no_toast()
        self.open_panel()
        screen.key("Escape")
        self.wait_for_no_panel()
        before = resident_memory(pid)
        for i, words in enumerate(BEHAVIOURS):
            with self.subTest(owner=" ".join(words)):
                owner = self.owner(*words)
                if i == 0:
                    os.kill(owner.pid, signal.SIGSTOP)
                longest = 0.0
                end_of_watch = time.monotonic() + 1.6
                while time.monotonic() < end_of_watch:
                    asked = time.monotonic()
                    self.assertEqual(0, self.program.ask("status").returncode)
                    longest = max(longest, time.monotonic() - asked)
                # Each is a process of its own, on a machine that has other work. A program that
                # waited for its other side would not answer for a second at least.
                self.assertLess(longest, 0.9)
        self.assertEqual(10, len(BEHAVIOURS))
        self.eventually(lambda: resident_memory(pid) < before + 8, "memory is gone")
        self.assert_quiet()


if __name__ == "__main__":
    case.main()
