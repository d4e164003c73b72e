"""What a person sees who starts the program where nothing of it can be seen."""
import case
from case import SessionTest
from processes import until


class WithoutTrayTest(SessionTest):
    def test_a_start_says_how_to_open_the_panel(self):
        self.program.end()
        log = self.desktop.log("first-contact")
        self.program.log = log
        self.start()

        def said():
            with open(log, encoding="utf-8") as file:
                return file.read()
        until(said)
        self.assertIn("⇧⌘E", said())
        self.assertEqual(1, len(said().splitlines()), said())


if __name__ == "__main__":
    case.main(tray=False)
