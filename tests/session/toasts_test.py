"""What a copied timestamp brings up, and what a copy of the program's own does."""
import os
import signal
import time

import accessibility
import case
import program
import screen
from processes import end, start, until
from toast_case import AWAY, COPIED, DATE, ON_IT, TEXT, ToastCase

SCREEN = (1440, 900)


class ToastsTest(ToastCase):
    def test_says_what_a_copied_timestamp_means(self):
        self.copy_and_wait()
        labels = accessibility.labels()
        self.assertEqual([DATE, TEXT, "·"], labels[:3])
        self.assertRegex(labels[3], r"^\d+ years? ago$")

    def test_follows_the_utc_switch(self):
        program.set_preferences(isUTC=True)
        self.copy_and_wait(date="Jan 1, 2024 at 12:00:00 AM")

    def test_says_nothing_about_other_texts(self):
        for text in ("now", "2024-01-01T00:00:00Z", "99999999", "9" * 101, "hello", ""):
            screen.copy(text)
            self.assertIsNone(until(self.toast, 0.4), text)
        self.assert_quiet()

    def test_says_nothing_about_what_was_there_before(self):
        self.program.end()
        screen.copy(TEXT)
        self.program.start()
        self.assert_quiet()

    def test_comes_again_for_an_equal_copy(self):
        self.copy_and_wait()
        self.wait_for_no_toast()
        self.copy_and_wait()

    def test_nothing_comes_of_a_program_that_ends(self):
        # Some window managers take the clipboard over then.
        path = os.path.join(os.environ["TMPDIR"], "copied")
        with open(path, "w", encoding="ascii") as file:
            file.write(TEXT)
        owner = start("xclip", "-quiet", "-i", "-selection", "clipboard", path)
        self.addCleanup(end, owner)
        self.wait_for_toast()
        self.wait_for_no_toast()
        owner.kill()
        owner.wait()
        self.assertIsNone(until(self.toast, 0.8))
        self.assert_quiet()

    def test_shows_the_last_of_two_copies_in_a_row(self):
        screen.move(*ON_IT)
        screen.copy(TEXT)
        screen.copy("1704067201")
        self.wait_for_toast()
        self.wait_for_text("1704067201")
        self.assertFalse(self.says(TEXT)())
        self.wait_for_no_toast()

    def test_stands_at_each_of_the_six_places(self):
        right, bottom = SCREEN
        top, low = 55, bottom - 85
        for position, pointer, place in (
                ("topLeft", (60, top), lambda w, h: (12, 12)),
                ("topCenter", (right / 2, top), lambda w, h: (right / 2 - w / 2, 12)),
                ("topRight", (right - 60, top), lambda w, h: (right - w - 12, 12)),
                ("bottomLeft", (60, low), lambda w, h: (12, bottom - 40 - h)),
                ("bottomCenter", ON_IT, lambda w, h: (right / 2 - w / 2, bottom - 40 - h)),
                ("bottomRight", (right - 60, low), lambda w, h: (right - w - 12, bottom - 40 - h)),
                ("nowhere", ON_IT, lambda w, h: (right / 2 - w / 2, bottom - 40 - h))):
            program.set_preferences(toastPosition=position)
            x, y, width, height = screen.geometry(self.copy_and_wait(pointer=pointer))
            for is_at, wanted in zip((x, y), place(width, height)):
                self.assertLessEqual(abs(is_at - wanted), 1, (position, x, y))
            self.wait_for_no_toast()

    def test_stays_three_seconds(self):
        screen.move(*AWAY)
        # Other work of the machine may make it late, but neither each time nor ever early.
        for _ in range(4):
            copied = time.monotonic()
            screen.copy(TEXT)
            self.wait_for_toast()
            came_after = time.monotonic() - copied
            self.wait_for_no_toast()
            gone_after = time.monotonic() - copied
            self.assertGreater(gone_after, 0.3 + 3.0 + 0.2)
            if came_after < 0.6 and gone_after < 4.5:
                break
        self.assertLess(came_after, 0.6)
        self.assertLess(gone_after, 4.5)

    def test_stays_under_the_pointer_and_three_seconds_more(self):
        self.copy_and_wait()
        self.assertIsNone(until(lambda: not self.toast() or None, 4.5))
        left = time.monotonic()
        self.wait_for_no_toast()
        self.assertGreater(time.monotonic() - left, 3.0 + 0.2)

    def test_a_click_copies_the_date_and_nothing_comes_of_that(self):
        window = self.copy_and_wait()
        self.copies(DATE, window)
        self.eventually(lambda: not self.toast(), "the pointer still holds it")
        self.assert_quiet()

    def test_a_second_click_copies_nothing(self):
        window = self.copy_and_wait()
        self.copies(DATE, window)
        screen.copy("something else")
        x, y, width, height = screen.geometry(window)
        screen.click(x + width // 3, y + height // 2)
        self.eventually(lambda: not self.toast())
        self.assertEqual("something else", screen.clipboard())

    def test_takes_the_keyboard_from_nobody(self):
        other = self.other_program()
        other.click()
        self.eventually_equal(other.title, screen.focused)
        window = self.copy_and_wait()
        self.assertEqual(other.title, screen.focused())
        self.copies(DATE, window)
        self.assertEqual(other.title, screen.focused())

    def test_lies_above_a_window_that_fills_the_screen(self):
        owner = start(os.environ["HORALO_MENU_OWNER"], "full-screen")
        self.addCleanup(end, owner)
        large = self.eventually(lambda: screen.window("MenuOwner"))
        self.eventually_equal((0, 0, *SCREEN), lambda: screen.geometry(large))
        self.eventually_equal("MenuOwner", screen.focused)
        window = self.copy_and_wait()
        self.copies(DATE, window)
        self.assertEqual("MenuOwner", screen.focused())

    def test_leaves_the_open_menu_of_another_program_alone(self):
        log = self.desktop.log("menu_owner")
        self.addCleanup(end, start(os.environ["HORALO_MENU_OWNER"], log=log))

        def has_said(word):
            with open(log, encoding="ascii") as words:
                return word in words.read().split()

        def opens_its_menu():
            x, y, width, height = screen.geometry(screen.window("MenuOwner"))
            screen.click(x + width / 2, y + height / 2)
            return until(lambda: has_said("open"), 3)

        self.eventually(lambda: screen.window("MenuOwner"))
        # The window may be moved to its place just when it is clicked at.
        self.eventually(opens_its_menu, "the menu does not open")
        screen.copy(TEXT)
        self.wait_for_toast()
        self.assertFalse(has_said("closed"))
        screen.key("Down", "Return")
        self.eventually(lambda: has_said("chosen"), "the menu has lost the keyboard")

    def test_does_not_come_while_the_converter_is_open(self):
        self.open_panel()
        screen.copy(TEXT)
        self.assertIsNone(until(self.toast, 0.6))
        self.assertTrue(self.panel())
        # Where the machine is so busy that it has not been looked at yet, it is this that is seen.
        screen.copy("nothing")
        for _ in range(2):
            self.program.status()
        screen.key("Escape")
        self.wait_for_no_panel()
        self.assert_quiet()

    def test_does_not_close_the_converter_that_opens_beside_it(self):
        self.copy_and_wait()
        self.open_panel()
        self.assertTrue(self.toast())
        self.wait_for_no_toast()
        self.assertTrue(self.panel())

    def test_our_own_copy_brings_only_its_confirmation(self):
        screen.copy("nothing")
        # It is there for a second, which a busy machine may miss, but not each time.
        self.assertTrue(any(self.copies_a_row_and_sees_it_confirmed() for _ in range(5)))
        self.assertEqual(TEXT, screen.clipboard())
        self.eventually(lambda: not screen.window(COPIED), "the confirmation stays")
        self.assertIsNone(self.toast())
        self.assert_quiet()

    def copies_a_row(self):
        self.open_panel()
        screen.key("ctrl+a")
        screen.type_text(TEXT)
        self.eventually_equal(TEXT, lambda: accessibility.row_values().get("Unix (s)"))
        screen.key("Return")

    def copies_a_row_and_sees_it_confirmed(self):
        self.copies_a_row()
        window = self.eventually(lambda: screen.window(COPIED), "nothing confirms the copy")
        place = until(lambda: screen.geometry(window), 0)
        is_named = self.says("Copied")()
        self.wait_for_no_panel()
        if not place or not is_named:
            return False
        x, y, width, height = place
        self.assertLessEqual(abs(x - (SCREEN[0] - width) / 2), 1)
        self.assertEqual(SCREEN[1] - 60, y + height)
        return True

    def test_the_pointer_goes_through_the_confirmation(self):
        other = self.other_program(place="+620+790")
        self.copies_a_row()
        self.eventually(lambda: screen.window(COPIED))
        screen.click(SCREEN[0] / 2, SCREEN[1] - 95)
        self.eventually_equal(other.title, screen.focused)

    def test_nothing_is_watched_where_the_user_does_not_want_it(self):
        self.program.end()
        program.set_preferences(clipboardMonitorEnabled=False)
        self.program.start()
        self.assertFalse(self.program.status()["clipboard"]["watching"])
        screen.copy(TEXT)
        self.assertIsNone(until(self.toast, 0.7))

    def test_says_that_it_watches(self):
        status = self.program.status()["clipboard"]
        self.assertEqual({"backend": "x11", "watching": True, "reason": ""}, status)

    def test_wakes_once_after_a_stop(self):
        os.kill(self.program.process.pid, signal.SIGSTOP)
        screen.copy("1600000000")
        screen.copy(TEXT)
        # Both are on the clipboard, and a look was due.
        self.eventually_equal(TEXT, screen.clipboard)
        time.sleep(0.5)
        screen.move(*ON_IT)
        os.kill(self.program.process.pid, signal.SIGCONT)
        self.wait_for_toast()
        self.wait_for_text(TEXT)
        self.assertFalse(self.says("1600000000")())


if __name__ == "__main__":
    case.main()
