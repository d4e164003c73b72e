"""The global shortcut under the keyboard's moods, and against other programs."""
import json
import os
import sys

import accessibility
import case
import program
import screen
from case import SessionTest
from processes import end, run, start

HERE = os.path.dirname(os.path.abspath(__file__))


def configuration(key_code, modifiers):
    return json.dumps({"keyCode": key_code, "modifiers": modifiers}).encode()


class ShortcutTest(SessionTest):
    def shows_panel(self, *keys):
        """Whether the keys open the panel; the answer of `status` says that they were dealt with."""
        run("xdotool", "key", *keys)
        return self.program.status()["panel"]["visible"]

    def tearDown(self):
        run("setxkbmap", "us")

    def test_says_what_it_is(self):
        hotkey = self.program.status()["hotkey"]
        self.assertEqual({"backend": "x11", "shortcut": "⇧⌘E", "active": True, "reason": ""},
                         hotkey)

    def test_a_held_key_presses_once(self):
        run("xset", "r", "rate", "200", "40")
        screen.run("xdotool", "keydown", "shift", "keydown", "super", "keydown", "e", "sleep", "0.8",
                   "keyup", "e", "keyup", "super", "keyup", "shift")
        self.wait_for_panel()
        self.assertEqual("", accessibility.input_text())

    def test_works_with_the_locks_on(self):
        for lock in ("Caps_Lock", "Num_Lock"):
            run("xdotool", "key", lock)
            self.open_panel()
            screen.key("Escape")
            self.wait_for_no_panel()
            run("xdotool", "key", lock)

    def test_stays_on_the_physical_key(self):
        for layout in ("de", "ru", "dvorak", "us,ru"):
            run("setxkbmap", layout)
            # The key right of W, whatever it types; modifiers by place as well.
            for action in ("keydown 50", "keydown 133", "key 26", "keyup 133", "keyup 50"):
                run("xdotool", *action.split())
            self.eventually(self.panel, "no panel under the layout " + layout)
            screen.key("Escape")
            self.wait_for_no_panel()

    def test_a_code_without_a_key_is_no_shortcut(self):
        self.program.end()
        program.set_preferences(hotkeyConfiguration=configuration(52, 0x120000))
        self.start()
        self.assertFalse(self.program.status()["hotkey"]["active"])
        self.assertFalse(self.shows_panel("shift+super+e"))

    def test_a_broken_configuration_is_the_usual_shortcut(self):
        for broken in (b"", b"{", b"[]", configuration(14, -1), configuration(2**32, 0)):
            self.program.end()
            program.set_preferences(hotkeyConfiguration=broken)
            self.start()
            self.open_panel()

    def test_another_shortcut(self):
        self.program.end()
        program.set_preferences(hotkeyConfiguration=configuration(40, 0x1E0000))
        self.start()
        self.assertEqual("⌃⌥⇧⌘K", self.program.status()["hotkey"]["shortcut"])
        self.assertFalse(self.shows_panel("shift+super+e"))
        run("xdotool", "key", "ctrl+alt+shift+super+k")
        self.wait_for_panel()

    def test_tells_that_it_is_taken_and_works_once_it_is_free(self):
        self.program.end()
        holder = start(sys.executable, os.path.join(HERE, "key_holder.py"))
        self.addCleanup(end, holder)
        self.eventually(lambda: screen.window("KeyHolder"))
        self.start()
        hotkey = self.program.status()["hotkey"]
        self.assertFalse(hotkey["active"])
        self.assertNotEqual("", hotkey["reason"])
        self.assertFalse(self.shows_panel("shift+super+e"))
        end(holder)
        # A change of the keyboard map is one of the moments at which it tries again.
        run("setxkbmap", "de")
        self.eventually(lambda: self.program.status()["hotkey"]["active"], seconds=35)
        self.open_panel()


if __name__ == "__main__":
    case.main()
