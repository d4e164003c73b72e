"""A program that copies a thousand times a second, for ten seconds, beside the real program."""
import os
import resource
import subprocess

import accessibility
import case
import screen
from processes import end, start, until
from toast_case import ON_IT, ToastCase

COPIES = 10000


def processor_seconds(pid):
    with open("/proc/%d/stat" % pid, encoding="ascii") as file:
        fields = file.read().rpartition(")")[2].split()
    return (int(fields[11]) + int(fields[12])) / os.sysconf("SC_CLK_TCK")


def resident_memory(pid):
    """In MiB."""
    with open("/proc/%d/statm" % pid, encoding="ascii") as file:
        return int(file.read().split()[1]) * resource.getpagesize() / 2**20


class StormTest(ToastCase):
    def test_the_last_copy_wins_and_then_it_is_quiet(self):
        pid = self.program.process.pid
        self.copy_and_wait()
        self.wait_for_no_toast()
        memory = resident_memory(pid)
        screen.move(*ON_IT)
        storm = start(os.environ["HORALO_BAD_OWNER"], "flood", str(COPIES), "1000", "170000000",
                      stdout=subprocess.PIPE)
        self.addCleanup(storm.stdout.close)
        self.addCleanup(end, storm)
        self.assertEqual(b"ready\n", storm.stdout.readline())
        self.assertEqual(b"done\n", storm.stdout.readline())
        self.wait_for_text("170000000%d" % COPIES)
        self.wait_for_no_toast()
        used = processor_seconds(pid)
        self.assertIsNone(until(self.toast, 2))
        self.assertLess(processor_seconds(pid) - used, 2 * 0.05)
        self.assertLess(resident_memory(pid), memory + 4)
        self.assertNotIn("·", accessibility.labels())


if __name__ == "__main__":
    case.main()
