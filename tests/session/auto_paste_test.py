"""Pasting on opening, with owners of the clipboard that take their time."""
import os
import signal
import time

import accessibility
import case
import screen
from case import SessionTest
from processes import end, start


class AutoPasteTest(SessionTest):
    preferences = {"autoPasteFromClipboard": True}

    def test_pastes_what_it_understands(self):
        screen.copy("  1700000000 \n")
        self.open_panel()
        self.eventually_equal("1700000000", accessibility.input_text)
        self.eventually_equal("1700000000",
                              lambda: accessibility.row_values().get("Unix (s)"))

    def test_leaves_what_it_does_not_understand(self):
        for text in ("hello", "1" * 101, ""):
            screen.copy("1234567890")
            self.open_panel()
            self.eventually_equal("1234567890", accessibility.input_text)
            screen.key("Escape")
            self.wait_for_no_panel()
            screen.copy(text)
            self.open_panel()
            screen.type_text("x")
            # Typing comes after the answer or discards it; either way nothing was pasted.
            self.eventually(lambda: "x" in (accessibility.input_text() or ""))
            self.assertNotIn(text or "hello", accessibility.input_text())
            screen.key("Escape")
            self.wait_for_no_panel()

    def test_selects_an_unchanged_text(self):
        screen.copy("42")
        self.open_panel()
        self.eventually_equal("42", accessibility.input_text)
        screen.key("Escape")
        self.wait_for_no_panel()
        self.open_panel()
        self.eventually(
            lambda: accessibility.input_field().get_text_iface().get_n_selections() == 1,
            "nothing is selected")
        screen.type_text("7")
        self.eventually_equal("7", accessibility.input_text)

    def test_a_stopped_owner_delays_neither_panel_nor_typing(self):
        owner = start("xclip", "-quiet", "-i", "-selection", "clipboard", "/etc/hostname")
        self.addCleanup(end, owner)
        self.eventually(lambda: screen.clipboard())
        os.kill(owner.pid, signal.SIGSTOP)
        # A machine may be busy once, but not each time; a panel that waited would need a second.
        for text in ("123", "1234", "12345"):
            opened = time.monotonic()
            self.open_panel()
            screen.key("ctrl+a")
            screen.type_text(text)
            self.eventually_equal(text, accessibility.input_text)
            took = time.monotonic() - opened
            if took < 0.9:
                break
            screen.key("Escape")
            self.wait_for_no_panel()
        self.assertLess(took, 0.9)
        os.kill(owner.pid, signal.SIGCONT)
        self.eventually_equal(text, lambda: accessibility.row_values().get("Unix (s)"))
        self.assertEqual(text, accessibility.input_text())


if __name__ == "__main__":
    case.main()
