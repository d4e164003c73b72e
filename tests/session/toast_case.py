"""What tests of the toasts have in common."""
import accessibility
import screen
from case import SessionTest
from processes import until

TITLE = "Horalo Conversion Toast"
COPIED = "Horalo Copied Toast"
# In the zone of the tests' user, Asia/Tokyo.
TEXT, DATE = "1704067200", "Jan 1, 2024 at 9:00:00 AM"
# On the toast, where it stands unless somebody wants it elsewhere; and far from any of the places.
ON_IT, AWAY = (720, 815), (360, 450)


class ToastCase(SessionTest):
    preferences = {"clipboardMonitorEnabled": True}

    def toast(self):
        return screen.window(TITLE)

    def wait_for_toast(self):
        return self.eventually(self.toast, "there is no toast")

    def wait_for_no_toast(self):
        """Lets go of a toast that the pointer holds."""
        screen.move(*AWAY)
        self.eventually(lambda: not self.toast(), "the toast stays")

    def says(self, text):
        return lambda: text in accessibility.labels()

    def wait_for_text(self, text):
        self.eventually(self.says(text), "no toast says %s" % text)

    def copy_and_wait(self, text=TEXT, date=DATE, pointer=ON_IT):
        """Copies, and waits for the toast. It comes under the pointer, which holds it for as long
        as a busy machine takes to look at it."""
        screen.move(*pointer)
        screen.copy(text)
        window = self.wait_for_toast()
        self.wait_for_text(date)
        return window

    def assert_quiet(self):
        """Nothing comes of what was copied before: the next timestamp is the first to be shown."""
        self.assertIsNone(until(self.toast, 0.45))  # a look and a half
        screen.move(*ON_IT)
        screen.copy("1600000000")
        self.wait_for_toast()
        # A screen reader hears of the new texts a little after the window is there.
        self.eventually(self.says("1600000000"), "another toast than the next one came")
        self.assertNotIn(TEXT, accessibility.labels())

    def copies(self, text, window):
        """Clicks the toast and waits until it has copied."""
        x, y, width, height = screen.geometry(window)
        screen.click(x + width // 3, y + height // 2)
        self.eventually_equal(text, screen.clipboard)
