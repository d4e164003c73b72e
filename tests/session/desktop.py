"""A desktop of a test's own: X server, session bus, accessibility bus, window manager, tray."""
import os
import shutil
import sys
import tempfile

import processes
from processes import run, start, until

HERE = os.path.dirname(os.path.abspath(__file__))

_FOREIGN = ("WAYLAND_DISPLAY", "SESSION_MANAGER", "XAUTHORITY", "XMODIFIERS", "GTK_IM_MODULE",
            "QT_IM_MODULE", "XDG_CURRENT_DESKTOP", "DESKTOP_SESSION", "QT_QPA_PLATFORMTHEME",
            "QT_STYLE_OVERRIDE", "QT_SCALE_FACTOR", "QT_PLUGIN_PATH", "QT_QPA_PLATFORM", "LANGUAGE",
            "XDG_ACTIVATION_TOKEN", "DESKTOP_STARTUP_ID")

_XFWM4_STRICT = """<?xml version="1.0" encoding="UTF-8"?>
<channel name="xfwm4" version="1.0"><property name="general" type="empty">
<property name="prevent_focus_stealing" type="bool" value="true"/></property></channel>
"""


class Desktop:
    """Starts when it is made, and ends everything in end(). Its variables go to os.environ, so that
    the programs and libraries that a test uses are on this desktop too."""

    def __init__(self, manager="openbox", strict=False, tray=False, size="1440x900",
                 monitors=(), compositor=None, accessibility=True):
        self.folder = tempfile.mkdtemp(prefix="horalo-test.")
        self.parts = []
        self.bus = None
        self.manager = manager
        self._environment(manager)
        try:
            self._start_server(size, monitors)
            self.start_bus()
            if accessibility:
                self._start_accessibility()
            self._start_manager(manager, strict)
            if compositor:
                self._start_compositor(compositor)
            self.tray = self.start_tray() if tray else None
        except BaseException:
            self.end()
            raise

    def _environment(self, manager):
        for name in _FOREIGN:
            os.environ.pop(name, None)
        for name in ("home", "config", "data", "cache", "state", "runtime", "log", "tmp"):
            os.mkdir(os.path.join(self.folder, name), 0o700)
        path = lambda name: os.path.join(self.folder, name)
        os.environ.update(
            HOME=path("home"), XDG_CONFIG_HOME=path("config"), XDG_DATA_HOME=path("data"),
            XDG_CACHE_HOME=path("cache"), XDG_STATE_HOME=path("state"),
            XDG_RUNTIME_DIR=path("runtime"), TMPDIR=path("tmp"), XDG_SESSION_TYPE="x11",
            QT_QPA_PLATFORM="xcb", GSETTINGS_BACKEND="keyfile", LIBGL_ALWAYS_SOFTWARE="1",
            NO_AT_BRIDGE="0")
        desktops = {"kwin_x11": "KDE", "xfwm4": "XFCE", "mutter": "GNOME"}
        if manager in desktops:
            os.environ["XDG_CURRENT_DESKTOP"] = desktops[manager]

    def log(self, name):
        return os.path.join(self.folder, "log", name)

    def _part(self, name, *command, ready=None, **options):
        process = start(*command, log=self.log(name), **options)
        self.parts.append(process)
        if ready and not until(lambda: process.poll() is not None or ready(), 20):
            raise RuntimeError("%s is not ready: %s" % (name, self._tail(name)))
        if process.poll() is not None:
            raise RuntimeError("%s ended early: %s" % (name, self._tail(name)))
        return process

    def _tail(self, name):
        with open(self.log(name), encoding="utf-8", errors="replace") as file:
            return " / ".join(file.read().splitlines()[-5:])

    def _start_server(self, size, monitors):
        if monitors:
            sizes = [tuple(map(int, m.split("x"))) for m in monitors]
            size = "%dx%d" % (sum(w for w, _ in sizes), max(h for _, h in sizes))
        self.server, os.environ["DISPLAY"] = start_x_server(size, self.log("server"))
        self.parts.append(self.server)
        left = 0
        for i, monitor in enumerate(monitors):
            width, height = map(int, monitor.split("x"))
            run("xrandr", "--setmonitor", ("*" if i == 0 else "") + "MON%d" % i,
                "%d/%dx%d/%d+%d+0" % (width, width * 254 // 960, height, height * 254 // 960, left),
                "screen" if i == 0 else "none")
            left += width

    def start_bus(self):
        """Starts a session bus; also a new one, at the same address, after the first has died."""
        address = os.path.join(self.folder, "runtime", "bus")
        if os.path.exists(address):
            os.unlink(address)
        os.environ["DBUS_SESSION_BUS_ADDRESS"] = "unix:path=" + address
        self.bus = self._part("bus", "dbus-daemon", "--session", "--nofork", "--nopidfile",
                              "--nosyslog", "--address=unix:path=" + address,
                              ready=lambda: os.path.exists(address))

    def _start_accessibility(self):
        self._part("accessibility", "/usr/libexec/at-spi-bus-launcher", "--launch-immediately",
                   "--a11y=1", ready=lambda: name_is_owned("org.a11y.Bus"))

    def _start_manager(self, manager, strict):
        config = os.environ["XDG_CONFIG_HOME"]
        if strict:
            folder = os.path.join(config, "xfce4/xfconf/xfce-perchannel-xml")
            os.makedirs(folder, exist_ok=True)
            with open(os.path.join(folder, "xfwm4.xml"), "w", encoding="utf-8") as file:
                file.write(_XFWM4_STRICT)
            with open(os.path.join(config, "kwinrc"), "w", encoding="utf-8") as file:
                file.write("[Windows]\nFocusStealingPreventionLevel=3\n")
            folder = os.path.join(config, "glib-2.0/settings")
            os.makedirs(folder, exist_ok=True)
            with open(os.path.join(folder, "keyfile"), "w", encoding="utf-8") as file:
                file.write("[org/gnome/desktop/wm/preferences]\nfocus-new-windows='strict'\n")
        commands = {"openbox": ["openbox", "--sm-disable"],
                    "xfwm4": ["xfwm4", "--compositor=off"],
                    "metacity": ["metacity", "--sm-disable", "--no-composite"],
                    "mutter": ["mutter", "--x11", "--sm-disable"],
                    "kwin_x11": ["env", "KWIN_COMPOSE=N", "kwin_x11", "--no-kactivities"]}
        if manager != "none":
            self._part("manager", *commands[manager], ready=lambda: "window id" in run(
                "xprop", "-root", "_NET_SUPPORTING_WM_CHECK").stdout)

    def _start_compositor(self, compositor):
        self._part("compositor", compositor, "--backend", "xrender", "--config", "/dev/null")

    def start_tray(self):
        """A StatusNotifier host without a window."""
        return self._part("tray", sys.executable, os.path.join(HERE, "tray_host.py"),
                          ready=lambda: name_is_owned("org.kde.StatusNotifierWatcher"))

    def end(self):
        for process in reversed(self.parts):
            processes.end(process)
        processes.end_marked()
        shutil.rmtree(self.folder, ignore_errors=True)


def start_x_server(size, log=None):
    """Starts an X server on a display that is free; gives the server and the display's name."""
    read, write = os.pipe()
    server = start("Xvfb", "-displayfd", str(write), "-screen", "0", size + "x24", "-nolisten", "tcp",
                   "-noreset", "-dpi", "96", log=log, pass_fds=(write,))
    os.close(write)
    with os.fdopen(read) as numbers:
        number = numbers.readline().strip()
    if not number:
        raise RuntimeError("the X server ended early")
    return server, ":" + number


def name_is_owned(name):
    """Whether somebody owns a name on the session bus."""
    return "true" in _ask_bus("NameHasOwner", name)


def owner_of_name(name):
    """The process that owns a name on the session bus; None where there is none."""
    words = _ask_bus("GetConnectionUnixProcessID", name).strip("(),\n").split()
    return int(words[-1]) if words else None


def _ask_bus(method, *words):
    return run("gdbus", "call", "--session", "-d", "org.freedesktop.DBus", "-o",
               "/org/freedesktop/DBus", "-m", "org.freedesktop.DBus." + method, *words).stdout
