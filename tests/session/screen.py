"""Windows, keys and the clipboard, as a person on the desktop has them."""
import subprocess

from processes import run, start, until


def windows(title):
    """The visible windows of just this title."""
    return [int(w) for w in run("xdotool", "search", "--onlyvisible", "--name",
                                "^%s$" % title).stdout.split()]


def window(title):
    return (windows(title) or [None])[0]


def geometry(identifier):
    """x, y (of the top left corner), width, height."""
    values = {}
    for line in run("xwininfo", "-id", str(identifier)).stdout.splitlines():
        name, _, value = line.strip().partition(":")
        values[name] = value.strip()
    return tuple(int(values[name]) for name in ("Absolute upper-left X", "Absolute upper-left Y",
                                                "Width", "Height"))


def prop(identifier, name):
    return run("xprop", "-id", str(identifier), name).stdout.strip()


def focused():
    """The title of the window that has the keyboard."""
    return run("xdotool", "getwindowfocus", "getwindowname").stdout.strip()


def key(*names):
    run("xdotool", "key", "--clearmodifiers", *names)


def press_shortcut():
    run("xdotool", "key", "shift+super+e")


def type_text(text):
    run("xdotool", "type", "--delay", "5", text, seconds=30)


def move(x, y):
    run("xdotool", "mousemove", str(round(x)), str(round(y)))


def click(x, y, button=1):
    run("xdotool", "mousemove", str(round(x)), str(round(y)), "click", str(button))


def drag(start_at, *stops, release=True):
    """Presses at a point and moves through the stops, each an event of its own."""
    words = ["mousemove", *map(str, map(round, start_at)), "mousedown", "1"]
    for stop in stops:
        words += ["mousemove", *map(str, map(round, stop)), "sleep", "0.03"]
    run("xdotool", *words, *(["mouseup", "1"] if release else []))


def copy(text, *options):
    """Puts a text on the clipboard as another program."""
    subprocess.run(["xclip", "-i", "-selection", "clipboard", *options], input=text, text=True,
                   stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL, timeout=5, check=True)


def clipboard():
    return run("xclip", "-o", "-selection", "clipboard", seconds=4).stdout


class OtherProgram:
    """A window of another program, to click into."""

    def __init__(self, title="OtherWindow", place="+20+700"):
        self.title = title
        self.process = start("xmessage", "-name", "other", "-title", title, "-geometry",
                             "300x100" + place, "other")
        self.window = until(lambda: window(title))
        assert self.window, "the other program shows no window"

    def click(self):
        x, y, width, _ = geometry(self.window)
        click(x + width // 2, y + 15)

    def end(self):
        self.process.kill()
        self.process.wait()
