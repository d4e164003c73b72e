"""Change everything in the settings window, and see it take effect at once."""
import json
import os

import accessibility
import case
import program
import screen
import tray
from case import SessionTest
from processes import run, until

SWITCHES = {"Launch at login": ("launchAtLogin", False),
            "Show menu bar icon": ("showMenuBarIcon", True),
            "Close after copying": ("closeWindowAfterCopy", True),
            "Auto-paste on open": ("autoPasteFromClipboard", False),
            "Background clipboard monitoring": ("clipboardMonitorEnabled", False)}


class SettingsTest(SessionTest):
    def setUp(self):
        super().setUp()
        self.assertEqual(0, self.program.ask("settings").returncode)
        self.eventually_equal("Horalo Settings", screen.focused)

    def switch(self, name):
        return self.eventually(lambda: accessibility.find("check box", name, showing=False), name)

    def recorder(self):
        return self.eventually(
            lambda: accessibility.find("push button", "Keyboard shortcut", showing=False))

    def start_recording(self):
        accessibility.press(self.recorder())
        self.eventually_equal("Type shortcut...", lambda: self.recorder().get_description())

    def test_the_window(self):
        window = screen.window("Horalo Settings")
        self.assertEqual((450, 440), screen.geometry(window)[2:])
        for name, (_, on) in SWITCHES.items():
            self.assertEqual(on, accessibility.has(self.switch(name), "CHECKED"), name)
        self.assertIn("Version 1.3.0", accessibility.labels())
        self.assertEqual("⇧⌘E", self.recorder().get_description())
        self.assertEqual({}, program.all_preferences(), "opening has stored something")

    def test_every_switch_is_stored(self):
        for name, (key, on) in SWITCHES.items():
            accessibility.press(self.switch(name))
            self.eventually_equal(not on, lambda k=key: program.preference(k))

    def test_pickers_are_named_by_their_row(self):
        titles = ["Toast position", "Clear input after closing", "Check for updates"]
        found = []
        for box in accessibility.find_all("combo box", showing=False):
            for relation in box.get_relation_set():
                if relation.get_relation_type().value_nick == "labelled-by":
                    found.append(relation.get_target(0).get_name())
        self.assertEqual(titles, found)

    def test_a_change_from_outside_shows(self):
        program.set_preferences(autoPasteFromClipboard=True)
        self.eventually(lambda: accessibility.has(self.switch("Auto-paste on open"), "CHECKED"))

    def test_the_icon_goes_and_comes(self):
        self.eventually(tray.icons)
        accessibility.press(self.switch("Show menu bar icon"))
        self.eventually(lambda: not tray.icons())
        self.eventually(lambda: any("Menu bar icon hidden." in text
                                    for text in accessibility.labels()))
        accessibility.press(self.switch("Show menu bar icon"))
        self.eventually(tray.icons)

    def test_launch_at_login_writes_an_entry(self):
        entry = os.path.join(os.environ["XDG_CONFIG_HOME"], "autostart/org.horalo.Horalo.desktop")
        accessibility.press(self.switch("Launch at login"))
        self.eventually(lambda: os.path.exists(entry))
        with open(entry, encoding="utf-8") as file:
            self.assertIn('Exec="%s" --background' % os.path.realpath(self.program.path),
                          file.read())
        accessibility.press(self.switch("Launch at login"))
        self.eventually(lambda: not os.path.exists(entry))

    def test_the_keyboard_alone_is_enough(self):
        screen.key("Tab")
        self.eventually(lambda: accessibility.has(self.switch("Launch at login"), "FOCUSED"))
        screen.key("Tab", "space")
        self.eventually_equal(False, lambda: program.preference("showMenuBarIcon"))
        for _ in range(4):
            screen.key("Tab")
        screen.key("Tab")
        screen.key("Up")
        self.eventually_equal("bottomLeft", lambda: program.preference("toastPosition"))

    def test_a_new_shortcut_works_at_once_and_the_old_no_longer(self):
        self.start_recording()
        run("xdotool", "key", "ctrl+alt+shift+super+k")
        self.eventually_equal("⌃⌥⇧⌘K", lambda: self.recorder().get_description())
        self.assertEqual({"keyCode": 40, "modifiers": 0x1E0000},
                         json.loads(program.preference("hotkeyConfiguration")))
        self.eventually_equal("Show Converter (⌃⌥⇧⌘K)", lambda: tray.icons()[0].titles()[0])
        screen.key("alt+F4")
        self.eventually(lambda: not screen.windows("Horalo Settings"))
        run("xdotool", "key", "shift+super+e")
        self.assertIsNone(until(self.panel, 0.3))
        run("xdotool", "key", "ctrl+alt+shift+super+k")
        self.wait_for_panel()

    def test_the_shortcut_in_use_can_be_recorded_again(self):
        self.start_recording()
        run("xdotool", "key", "shift+super+e")
        self.eventually_equal("⇧⌘E", lambda: self.recorder().get_description())
        self.assertEqual([], screen.windows("Horalo"))
        screen.key("alt+F4")
        self.open_panel()

    def test_what_is_no_shortcut_is_not_recorded(self):
        self.start_recording()
        for keys in ("shift+a", "a", "Shift_L", "super"):
            run("xdotool", "key", keys)
        self.assertEqual("Type shortcut...", self.recorder().get_description())
        run("xdotool", "key", "Escape")
        self.eventually_equal("⇧⌘E", lambda: self.recorder().get_description())
        self.assertIsNone(program.preference("hotkeyConfiguration"))
        self.assertNotEqual([], screen.windows("Horalo Settings"))

    def test_closing_while_recording_changes_nothing(self):
        self.start_recording()
        other = self.other_program()
        other.click()
        self.eventually_equal("⇧⌘E", lambda: self.recorder().get_description())
        self.open_panel()

    def test_the_program_ends_with_all_its_windows_open(self):
        self.open_panel()
        self.assertNotEqual([], screen.windows("Horalo Settings"))
        self.program.process.terminate()
        self.assertEqual(0, self.program.process.wait(10))


if __name__ == "__main__":
    case.main()
