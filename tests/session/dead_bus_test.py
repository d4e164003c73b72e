"""The session bus dies under the program."""
import os
import signal

import case
import program
import screen
import tray
from case import SessionTest


class DyingBusTest(SessionTest):
    def test_the_program_outlives_the_bus(self):
        self.eventually(lambda: tray.icons())
        os.kill(self.desktop.bus.pid, signal.SIGKILL)
        self.desktop.bus.wait()
        # Nobody can ask the accessibility bus for the focus any more.
        screen.press_shortcut()
        self.eventually(self.panel)
        program.set_preferences(showMenuBarIcon=False)
        again = self.program.ask("toggle")
        self.assertEqual(0, again.returncode, again.stderr)
        self.eventually(lambda: not screen.windows("Horalo"))
        # A second start still finds the first.
        self.assertEqual(0, self.program.ask().returncode)
        self.eventually(self.panel)
        self.assertTrue(self.program.is_running())


if __name__ == "__main__":
    case.main()
