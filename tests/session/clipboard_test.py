"""The program's own copies: what other programs get of them, and for how long."""
import os
import subprocess

import accessibility
import case
import screen
from processes import end, run, start
from toast_case import DATE, TEXT, ToastCase


def paste(target):
    return run("xclip", "-o", "-selection", "clipboard", "-t", target, seconds=4).stdout


class ClipboardTest(ToastCase):
    def copy_a_row(self):
        self.open_panel()
        screen.type_text(TEXT)
        self.eventually_equal(TEXT, lambda: accessibility.row_values().get("Unix (s)"))
        screen.key("Return")
        self.eventually_equal(TEXT, screen.clipboard)

    def manager(self, mode):
        process = start(os.environ["HORALO_CLIPBOARD_MANAGER"], mode, stdout=subprocess.PIPE)
        self.addCleanup(process.stdout.close)
        self.addCleanup(end, process)
        self.assertEqual(b"ready\n", process.stdout.readline())
        return process

    def test_is_offered_as_text_in_the_usual_forms(self):
        self.copy_a_row()
        forms = ("UTF8_STRING", "STRING", "TEXT", "text/plain", "text/plain;charset=utf-8")
        offered = paste("TARGETS").split()
        for form in forms + ("TARGETS", "MULTIPLE", "TIMESTAMP", "SAVE_TARGETS"):
            self.assertIn(form, offered)
        for form in forms:
            self.assertEqual(TEXT, paste(form), form)

    def test_outlives_the_program_where_there_is_a_clipboard_manager(self):
        manager = self.manager("saves")
        self.copy_a_row()
        self.assertEqual(0, self.program.ask("quit").returncode)
        self.assertEqual(b"has %s\n" % TEXT.encode(), manager.stdout.readline())
        self.assertFalse(self.program.is_running())
        self.assertEqual(TEXT, paste("UTF8_STRING"))

    def test_outlives_a_signal_too(self):
        manager = self.manager("saves")
        self.copy_a_row()
        self.assertEqual(0, self.program.end())
        self.assertEqual(b"has %s\n" % TEXT.encode(), manager.stdout.readline())

    def test_a_silent_manager_delays_the_end_by_a_second_at_most(self):
        self.manager("silent")
        self.copy_a_row()
        # What a toolkit's own clipboard would wait is five seconds.
        answer = self.program.ask("quit", seconds=4)
        self.assertEqual(0, answer.returncode, answer.stderr)

    def test_one_copy_is_one_toast_where_a_manager_takes_each_over(self):
        manager = self.manager("grabs")
        window = self.copy_and_wait()
        self.assertEqual(b"has %s\n" % TEXT.encode(), manager.stdout.readline())
        x, y, width, height = screen.geometry(window)
        screen.click(x + width // 3, y + height // 2)
        self.assertEqual(b"has %s\n" % DATE.encode(), manager.stdout.readline())
        self.wait_for_no_toast()
        self.assert_quiet()


if __name__ == "__main__":
    case.main()
