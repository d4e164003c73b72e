"""A shortcut that is recorded over and over leaves nothing behind."""
import os
import sys

import accessibility
import case
import screen
from case import SessionTest
from processes import run

ROUNDS = int(os.environ.get("HORALO_TEST_ROUNDS", "100"))
HERE = os.path.dirname(os.path.abspath(__file__))

KEY_E, KEY_K = 26, 45
SHIFT, CONTROL, ALT, SUPER = 1, 4, 8, 64

# What is pressed, what the recorder then shows, and the X key code and modifiers of it.
SHORTCUTS = (
    ("ctrl+alt+shift+super+k", "⌃⌥⇧⌘K", KEY_K, CONTROL | ALT | SHIFT | SUPER),
    ("shift+super+e", "⇧⌘E", KEY_E, SHIFT | SUPER),
)


def is_free(key, modifiers):
    holder = os.path.join(HERE, "key_holder.py")
    return run(sys.executable, holder, "--try", str(key), str(modifiers)).returncode == 0


def kilobytes(pid):
    """The memory that a process has filled itself, not that of files which it maps."""
    with open("/proc/%d/smaps_rollup" % pid, encoding="ascii") as file:
        return next(int(line.split()[1]) for line in file if line.startswith("Anonymous:"))


def open_files(pid):
    return len(os.listdir("/proc/%d/fd" % pid))


class RecordingTest(SessionTest):
    def setUp(self):
        super().setUp()
        self.assertEqual(0, self.program.ask("settings").returncode)
        self.eventually_equal("Horalo Settings", screen.focused)
        self.recorder = self.eventually(
            lambda: accessibility.find("push button", "Keyboard shortcut", showing=False))

    def record(self, keys, text):
        accessibility.press(self.recorder)
        self.eventually_equal("Type shortcut...", self.recorder.get_description)
        run("xdotool", "key", keys)
        self.eventually_equal(text, self.recorder.get_description)

    def record_all(self, rounds):
        for _ in range(rounds):
            for keys, text, _, _ in SHORTCUTS:
                self.record(keys, text)

    def test_leaves_one_grab_and_no_memory(self):
        pid = self.program.process.pid
        self.record_all(10)
        memory, files = kilobytes(pid), open_files(pid)
        self.record_all(ROUNDS)
        # A connection may be made late, for once; what a recording left would be many.
        self.eventually(lambda: open_files(pid) <= files + 3, "files stay open")
        self.assertLess(kilobytes(pid) - memory, 128, "kB more after %d recordings" % (2 * ROUNDS))

        (_, _, first_key, first_modifiers), (_, _, last_key, last_modifiers) = SHORTCUTS
        self.eventually(lambda: is_free(first_key, first_modifiers), "the old one is still held")
        self.assertFalse(is_free(last_key, last_modifiers))
        screen.key("alt+F4")
        self.open_panel()
        self.assertEqual(0, self.program.end())
        self.eventually(lambda: is_free(last_key, last_modifiers), "its end leaves a grab")


if __name__ == "__main__":
    case.main()
