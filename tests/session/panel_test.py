"""Open, type, read, copy, close: what people do dozens of times a day."""
import os
import sys
import time

import accessibility
import case
import program
import screen
from case import SessionTest
from processes import end, start

HERE = os.path.dirname(os.path.abspath(__file__))

NEW_YEAR = "1704067200"


class PanelTest(SessionTest):
    def type(self, text):
        screen.type_text(text)
        self.eventually_equal(text, accessibility.input_text)

    def test_is_not_shown_at_the_start(self):
        self.assertFalse(self.program.status()["panel"]["visible"])
        self.assertEqual([], screen.windows("Horalo"))

    def test_the_shortcut_opens_it_with_the_keyboard(self):
        window = self.open_panel()
        self.assertEqual((480, 280), screen.geometry(window)[2:])
        self.assertIn('"horalo"', screen.prop(window, "WM_CLASS"))
        self.assertTrue(self.program.status()["panel"]["visible"])
        self.assertIn("Type a timestamp or date", accessibility.labels())

    def test_the_shortcut_closes_it_again(self):
        self.open_panel()
        screen.press_shortcut()
        self.wait_for_no_panel()
        self.open_panel()

    def test_keeps_the_keyboard_when_it_is_closed_and_opened_at_once(self):
        for pause in (0, 0.02, 0.05, 0.1):
            self.open_panel()
            screen.press_shortcut()
            time.sleep(pause)
            self.open_panel()
            self.eventually(lambda: accessibility.has(accessibility.input_field(), "FOCUSED"),
                            "no caret after %s s" % pause)
            screen.press_shortcut()
            self.wait_for_no_panel()

    def test_takes_the_keyboard_from_another_program(self):
        other = self.other_program()
        other.click()
        self.eventually_equal("OtherWindow", screen.focused)
        self.open_panel()
        self.type("now")

    def test_a_key_typed_right_after_the_shortcut_is_not_lost(self):
        other = self.other_program()
        other.click()
        # One process, so that nothing lies between the keys; the first is still held meanwhile.
        screen.run("xdotool", "keydown", "shift", "keydown", "super", "keydown", "e", "keyup",
                   "super", "keyup", "shift", "key", "1", "key", "2", "keyup", "e", "key", "3")
        self.eventually(self.panel)
        self.eventually_equal("123", accessibility.input_text)

    def test_shows_five_rows_and_what_was_detected(self):
        self.open_panel()
        self.type(NEW_YEAR)
        self.eventually_equal(5, lambda: len(accessibility.rows()))
        rows = accessibility.rows()
        self.assertEqual(["Unix (s)", "Unix (ms)", "ISO 8601", "Formatted", "Relative"],
                         [label for label, _, _ in rows])
        self.assertEqual([NEW_YEAR, NEW_YEAR + "000", "2024-01-01T09:00:00+09:00",
                          "Jan 1, 2024 at 9:00:00 AM"], [value for _, value, _ in rows][:4])
        self.assertRegex(rows[4][1], r"^\d+ years? ago$")
        self.assertIn("Detected: Unix (seconds)", accessibility.labels())
        self.assertEqual(0, accessibility.selected_row())

    def test_rows_follow_every_key(self):
        self.open_panel()
        for i in range(1, 6):
            screen.type_text(NEW_YEAR[i - 1])
            self.eventually_equal(NEW_YEAR[:i],
                                  lambda: accessibility.row_values().get("Unix (s)"))

    def test_says_what_it_cannot_read(self):
        self.open_panel()
        self.type("next tuesdy")
        self.eventually(lambda: "Could not parse input" in accessibility.labels())
        self.assertEqual([], accessibility.rows())

    def test_the_clear_button_is_there_only_with_a_text(self):
        self.open_panel()
        self.assertIsNone(accessibility.find("push button", "Clear"))
        self.type("now")
        accessibility.press(self.eventually(lambda: accessibility.find("push button", "Clear")))
        self.eventually_equal("", accessibility.input_text)
        self.eventually(lambda: "Type a timestamp or date" in accessibility.labels())
        self.assertIsNone(accessibility.find("push button", "Clear"))

    def test_arrows_move_the_selection_and_stop_at_the_ends(self):
        self.open_panel()
        self.type("0")
        self.eventually_equal(0, accessibility.selected_row)
        for wanted in (1, 2, 3, 4, 4):
            screen.key("Down")
            self.eventually_equal(wanted, accessibility.selected_row)
        for wanted in (3, 2, 1, 0, 0):
            screen.key("Up")
            self.eventually_equal(wanted, accessibility.selected_row)

    def test_typing_moves_the_selection_to_the_first_row(self):
        self.open_panel()
        self.type("0")
        screen.key("Down", "Down")
        self.eventually_equal(2, accessibility.selected_row)
        screen.type_text("1")
        self.eventually_equal(0, accessibility.selected_row)

    def test_return_copies_the_selected_row_and_closes(self):
        self.open_panel()
        self.type(NEW_YEAR)
        screen.key("Down", "Down")
        self.eventually_equal(2, accessibility.selected_row)
        screen.key("Return")
        self.wait_for_no_panel()
        self.eventually_equal("2024-01-01T09:00:00+09:00", screen.clipboard)

    def test_a_click_copies_the_row_under_the_pointer(self):
        self.open_panel()
        self.type(NEW_YEAR)
        self.eventually_equal(5, lambda: len(accessibility.rows()))
        row = next(n for n in accessibility.find_all("list item")
                   if n.get_name().startswith("Unix (ms)"))
        x, y, width, height = accessibility.bounds(row)
        screen.click(x + width / 2, y + height / 2)
        self.wait_for_no_panel()
        self.eventually_equal(NEW_YEAR + "000", screen.clipboard)

    def test_a_drag_in_a_value_selects_text_and_copies_nothing(self):
        screen.copy("before")
        window = self.open_panel()
        self.type(NEW_YEAR)
        self.eventually_equal(5, lambda: len(accessibility.rows()))
        row = accessibility.find_all("list item")[0]
        x, y, _, height = accessibility.bounds(row)
        middle = y + height / 2
        place = screen.geometry(window)
        screen.drag((x + 96, middle), (x + 130, middle), (x + 300, middle))
        self.assertEqual(place, screen.geometry(window))
        self.assertEqual("before", screen.clipboard())
        screen.key("ctrl+c")
        self.eventually(lambda: screen.clipboard() != "before")
        self.assertIn(screen.clipboard(), NEW_YEAR)
        self.assertIsNotNone(self.panel())

    def test_escape_closes(self):
        self.open_panel()
        screen.key("Escape")
        self.wait_for_no_panel()

    def test_a_click_elsewhere_closes(self):
        other = self.other_program()
        self.open_panel()
        other.click()
        self.wait_for_no_panel()
        self.assertFalse(self.program.status()["panel"]["visible"])

    def test_stays_open_while_another_program_has_a_key(self):
        holder = start(sys.executable, os.path.join(HERE, "key_holder.py"), "72", "0")  # F6
        self.addCleanup(end, holder)
        self.eventually(lambda: screen.window("KeyHolder"))
        self.open_panel()
        # Longer than it would take to believe that the keyboard is gone.
        screen.run("xdotool", "keydown", "72", "sleep", "0.3", "keyup", "72", "key", "5")
        self.eventually_equal("5", accessibility.input_text)

    def test_keeps_its_input_between_shows(self):
        self.open_panel()
        self.type("1234")
        screen.key("Escape")
        self.wait_for_no_panel()
        self.open_panel()
        self.eventually_equal("1234", accessibility.input_text)

    def test_its_own_menu_does_not_close_it(self):
        self.open_panel()
        button = accessibility.find("push button", "JST")
        x, y, width, height = accessibility.bounds(button)
        screen.click(x + width / 2, y + height / 2)
        # The first entry is the local zone, then a line, then eleven zones: Berlin is the seventh.
        for _ in range(8):
            screen.key("Down")
        screen.key("Return")
        self.eventually(lambda: accessibility.find("push button", "JST") is None)
        self.assertIsNotNone(self.panel())
        self.type("0")
        self.eventually_equal("1970-01-01T01:00:00+01:00",
                              lambda: accessibility.row_values().get("ISO 8601"))

    def test_the_switch_shows_utc_and_is_remembered(self):
        self.open_panel()
        self.type(NEW_YEAR)
        accessibility.press(accessibility.find("check box", "UTC"))
        self.eventually_equal("2024-01-01T00:00:00Z",
                              lambda: accessibility.row_values().get("ISO 8601"))
        self.assertTrue(accessibility.has(accessibility.find("check box", "UTC"), "CHECKED"))
        self.eventually_equal(True, lambda: program.preference("isUTC"))

    def test_control_comma_opens_the_settings(self):
        for keys in ("ctrl+comma", "super+comma"):
            self.open_panel()
            screen.key(keys)
            self.eventually_equal("Horalo Settings", screen.focused)
            self.wait_for_no_panel()
            screen.key("alt+F4")
            self.eventually(lambda: not screen.windows("Horalo Settings"))

    def test_command_comma_needs_no_latin_layout(self):
        self.addCleanup(screen.run, "setxkbmap", "us")
        screen.run("setxkbmap", "ru")
        # By their places: Shift, Super and the key right of W; then Super and the comma's key.
        screen.run("xdotool", "keydown", "50", "keydown", "133", "key", "26", "keyup", "133", "keyup",
                   "50")
        self.wait_for_panel()
        screen.run("xdotool", "keydown", "133", "key", "59", "keyup", "133")
        self.eventually_equal("Horalo Settings", screen.focused)
        self.wait_for_no_panel()


class StayOpenTest(SessionTest):
    preferences = {"closeWindowAfterCopy": False}

    def test_stays_open_after_a_copy(self):
        self.open_panel()
        screen.type_text("5")
        self.eventually_equal(5, lambda: len(accessibility.rows()))
        screen.key("Return")
        self.eventually_equal("5", screen.clipboard)
        self.assertIsNotNone(self.panel())
        screen.key("Down")
        screen.key("Return")
        self.eventually_equal("5000", screen.clipboard)
        self.assertIsNotNone(self.panel())


class ClearDelayTest(SessionTest):
    preferences = {"autoClearDelay": 0.2}

    def test_the_input_is_cleared_some_time_after_closing(self):
        self.open_panel()
        screen.type_text("77")
        self.eventually_equal("77", accessibility.input_text)
        # Opening it stops the timer, so that its own length is all there is to go by; a busy
        # machine may be late, but not each time.
        self.assertTrue(any(self.is_cleared_while_closed() for _ in range(5)))

    def is_cleared_while_closed(self):
        screen.key("Escape")
        self.wait_for_no_panel()
        time.sleep(2 * self.preferences["autoClearDelay"])
        self.open_panel()
        self.eventually(accessibility.input_field)
        return accessibility.input_text() == ""


if __name__ == "__main__":
    case.main()
