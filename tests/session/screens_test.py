"""Two monitors: the panel and the toasts open on the one with the pointer."""
import case
import screen
from toast_case import ToastCase


class ScreensTest(ToastCase):
    preferences = {"clipboardMonitorEnabled": True, "toastPosition": "topLeft"}

    def test_shows_a_toast_on_the_screen_with_the_pointer(self):
        for left in (0, 1440):
            window = self.copy_and_wait(pointer=(left + 60, 50))
            self.assertEqual((left + 12, 12), screen.geometry(window)[:2])
            self.wait_for_no_toast()

    def test_opens_on_the_screen_with_the_pointer(self):
        screen.move(700, 400)
        window = self.open_panel()
        self.assertEqual((480, 900 // 2 - 50 - 280), screen.geometry(window)[:2])
        screen.key("Escape")
        self.wait_for_no_panel()
        screen.move(1440 + 300, 500)
        window = self.open_panel()
        self.assertEqual((1440 + 400, 1024 // 2 - 50 - 280), screen.geometry(window)[:2])


if __name__ == "__main__":
    case.main(monitors=("1440x900", "1280x1024"))
