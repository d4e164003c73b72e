"""The frame of a session test: one desktop a file, one new program and an empty home a test."""
import os
import sys
import unittest

import program
import screen
from desktop import Desktop
from processes import until

MANAGER = os.environ.get("HORALO_TEST_MANAGER", "openbox")
PROGRAM = os.environ.get("HORALO_TEST_PROGRAM", "build/dev/horalo")


class SessionTest(unittest.TestCase):
    """Tests share the desktop, and nothing else."""

    # One for all tests of a file: the accessibility library stays with the first bus that it meets.
    desktop = None
    # What is stored before the program starts.
    preferences = {}

    def setUp(self):
        program.forget_everything()
        screen.move(1, 1)
        self.program = program.Program(PROGRAM, log=self.desktop.log("horalo"))
        if self.preferences:
            program.set_preferences(**self.preferences)
        self.start()

    def start(self):
        self.program.start()
        self.addCleanup(self.program.end)

    def eventually(self, condition, message=None, seconds=20.0):
        """Waits for something to become true, and fails where it does not. The time is that of a
        machine with much other work; a limit that a user would notice is given where it is meant."""
        answer = until(condition, seconds)
        if not answer:
            self.fail(message or "it did not happen within %s s" % seconds)
        return answer

    def eventually_equal(self, wanted, function, seconds=20.0):
        """Waits until the function gives what is wanted; what it gave last tells of a failure."""
        last = []

        def is_wanted():
            last[:] = [function()]
            return last[0] == wanted

        if not until(is_wanted, seconds):
            self.assertEqual(wanted, last[0] if last else None)
            self.fail("there was no %r within %s s" % (wanted, seconds))

    def panel(self):
        return screen.window("Horalo")

    def open_panel(self):
        screen.press_shortcut()
        return self.wait_for_panel()

    def wait_for_panel(self):
        window = self.eventually(self.panel, "the panel does not open")
        self.eventually(lambda: screen.focused() == "Horalo",
                        "the panel does not get the keyboard, %r has it" % screen.focused())
        return window

    def wait_for_no_panel(self):
        self.eventually(lambda: not screen.windows("Horalo"), "the panel does not close")

    def other_program(self, **options):
        other = screen.OtherProgram(**options)
        self.addCleanup(other.end)
        return other


def main(tray=True, **desktop_options):
    """Runs the file's tests on a desktop; no test, or one that was left out, is a failure too."""
    SessionTest.desktop = Desktop(manager=MANAGER, strict=MANAGER != "openbox", tray=tray,
                                  **desktop_options)
    try:
        result = unittest.main(module="__main__", exit=False, verbosity=2).result
    finally:
        SessionTest.desktop.end()
    complete = result.testsRun > 0 and not result.skipped
    sys.exit(0 if result.wasSuccessful() and complete else 1)
