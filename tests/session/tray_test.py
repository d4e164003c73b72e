"""The icon, its menu, and trays that come late or go."""
import case
import program
import screen
import tray
from case import SessionTest
from processes import end

TITLES = ["Show Converter (⇧⌘E)", "-", "Settings...", "Check for Updates...", "-", "Quit Horalo"]


class TrayTest(SessionTest):
    def icon(self):
        return self.eventually(lambda: tray.icons() or None, "there is no icon")[0]

    def setUp(self):
        if self.desktop.tray.poll() is not None:
            self.desktop.tray = self.desktop.start_tray()
        super().setUp()

    def test_the_menu(self):
        entries = self.icon().entries()
        self.assertEqual(TITLES, self.icon().titles())
        shortcuts = [p.get("shortcut") for _, p in entries]
        self.assertEqual([None, None, [["Control", ","]], None, None, [["Control", "q"]]],
                         [s if s is None else [[*s[0][:-1], s[0][-1].lower()]] for s in shortcuts])

    def test_entries_do_what_they_say(self):
        icon = self.icon()
        icon.choose(TITLES[0])
        self.wait_for_panel()
        icon.choose(TITLES[0])
        self.wait_for_no_panel()
        icon.choose("Settings...")
        self.eventually(lambda: screen.window("Horalo Settings"))
        icon.choose("Check for Updates...")
        self.eventually(lambda: screen.window("Horalo Update"))
        screen.key("Return")
        self.eventually(lambda: not screen.windows("Horalo Update"))
        icon.choose("Quit Horalo")
        self.eventually(lambda: self.program.process.poll() == 0)

    def test_status_tells_of_it(self):
        self.icon()
        self.assertEqual({"backend": "statusnotifier", "visible": True, "reason": ""},
                         self.program.status()["tray"])

    def test_a_stored_false_hides_it(self):
        self.program.end()
        program.set_preferences(showMenuBarIcon=False)
        self.start()
        self.assertEqual([], tray.icons())
        self.assertFalse(self.program.status()["tray"]["visible"])

    def test_what_is_no_boolean_shows_it(self):
        self.program.end()
        program.set_preferences(showMenuBarIcon="false")
        self.start()
        self.icon()

    def test_comes_when_the_tray_comes_and_comes_back(self):
        self.program.end()
        end(self.desktop.tray)
        self.start()
        for _ in range(3):
            self.desktop.tray = self.desktop.start_tray()
            self.icon()
            self.assertEqual(TITLES, self.icon().titles())
            end(self.desktop.tray)
        self.assertTrue(self.program.is_running())


if __name__ == "__main__":
    case.main()
