"""Where the panel opens, and how it is dragged."""
import case
import program
import screen
from case import SessionTest
from processes import run

WIDTH, HEIGHT = 480, 280
# A place on the panel's background: left of the magnifying glass.
GRIP = (8, 27)


class PlacementTest(SessionTest):
    def home(self):
        """Top left corner of the home position on a desktop without panels."""
        width, height = 1440, 900
        return (width - WIDTH) // 2, height // 2 - 50 - HEIGHT

    def place(self):
        return screen.geometry(self.panel())[:2]

    def drag_by(self, *steps, release=True):
        """Drags the panel's background through distances from where it is pressed."""
        x, y = self.place()
        start = (x + GRIP[0], y + GRIP[1])
        screen.drag(start, *[(start[0] + dx, start[1] + dy) for dx, dy in steps], release=release)

    def test_opens_above_the_middle(self):
        self.open_panel()
        self.assertEqual(self.home(), self.place())

    def test_opens_there_again_whatever_frame_it_seems_to_have(self):
        # A window manager that is slow to put a new window into a frame makes it seem to have one
        # of another size. The program looks at it when the window moves.
        window = self.open_panel()
        run("xprop", "-id", str(window), "-f", "_NET_FRAME_EXTENTS", "32c",
            "-set", "_NET_FRAME_EXTENTS", "0, 0, 0, 100")
        run("xdotool", "windowmove", str(window), "300", "300")
        self.eventually_equal((300, 300), self.place)
        screen.press_shortcut()
        self.wait_for_no_panel()
        self.open_panel()
        self.assertEqual(self.home(), self.place())

    def test_half_a_saved_position_is_none(self):
        program.set_preferences(panelPositionX=12.0)
        self.open_panel()
        self.assertEqual(self.home(), self.place())

    def test_opens_where_it_was_saved(self):
        # Stored with the origin at the bottom left, y being the panel's lower edge.
        program.set_preferences(panelPositionX=100.0, panelPositionY=300.0)
        self.open_panel()
        self.assertEqual((100, 900 - 300 - HEIGHT), self.place())

    def test_a_short_drag_leaves_it_at_home(self):
        self.open_panel()
        self.drag_by((5, 9), (10, 17))
        self.assertEqual(self.home(), self.place())

    def test_leaves_home_by_the_whole_distance_at_once(self):
        self.open_panel()
        x, y = self.home()
        self.drag_by((10, 0), (19, 0))
        self.eventually_equal((x + 19, y), self.place)
        self.eventually_equal(float(x + 19), lambda: program.preference("panelPositionX"))
        self.assertEqual(float(900 - y - HEIGHT), program.preference("panelPositionY"))

    def test_snaps_home_from_less_than_the_dead_zone(self):
        self.open_panel()
        x, y = self.home()
        self.drag_by((60, 40))
        self.eventually_equal((x + 60, y + 40), self.place)
        self.drag_by((-42, -23))
        self.eventually_equal((x + 18, y + 17), self.place)
        self.drag_by((-1, 0))
        self.eventually_equal((x, y), self.place)

    def test_a_click_on_the_background_saves_the_place(self):
        self.open_panel()
        x, y = self.place()
        screen.click(x + GRIP[0], y + GRIP[1])
        self.eventually_equal(float(x), lambda: program.preference("panelPositionX"))
        self.assertEqual(float(900 - y - HEIGHT), program.preference("panelPositionY"))

    def test_guides_are_shown_while_the_button_is_down(self):
        self.open_panel()
        self.assertEqual([], screen.windows("Horalo Guides"))
        self.drag_by((2, 2), release=False)
        guides = self.eventually(lambda: screen.window("Horalo Guides"))
        self.assertEqual((0, 0, 1440, 900), screen.geometry(guides))
        screen.run("xdotool", "mouseup", "1")
        self.eventually(lambda: not screen.windows("Horalo Guides"))
        self.assertIsNotNone(self.panel(), "the guides took the keyboard from the panel")


if __name__ == "__main__":
    case.main()
