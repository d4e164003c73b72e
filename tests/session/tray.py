"""What a panel does with the tray icons on the session bus."""
import gi

gi.require_version("Gio", "2.0")
from gi.repository import Gio, GLib  # noqa: E402

WATCHER = "org.kde.StatusNotifierWatcher"
MENU = "com.canonical.dbusmenu"


def _call(owner, path, interface, method, arguments=None):
    bus = Gio.bus_get_sync(Gio.BusType.SESSION)
    return bus.call_sync(owner, path, interface, method, arguments, None, Gio.DBusCallFlags.NONE,
                         3000).unpack()


def _properties(owner, path, interface):
    return _call(owner, path, "org.freedesktop.DBus.Properties", "GetAll",
                 GLib.Variant("(s)", (interface,)))[0]


class TrayIcon:
    def __init__(self, item):
        owner, _, path = item.partition("/")
        self.owner = owner
        self.path = "/" + path
        self.properties = _properties(self.owner, self.path, "org.kde.StatusNotifierItem")

    def activate(self):
        _call(self.owner, self.path, "org.kde.StatusNotifierItem", "Activate",
              GLib.Variant("(ii)", (0, 0)))

    def entries(self):
        """The menu, top to bottom, as (number, properties)."""
        path = self.properties["Menu"]
        # A panel says that it is about to show the menu; a program may fill it only then.
        _call(self.owner, path, MENU, "AboutToShow", GLib.Variant("(i)", (0,)))
        layout = _call(self.owner, path, MENU, "GetLayout", GLib.Variant("(iias)", (0, -1, [])))[1]
        return [(child[0], child[1]) for child in layout[2]]

    def titles(self):
        """The entries' titles, "-" for a separator."""
        return ["-" if p.get("type") == "separator" else p.get("label", "").replace("_", "")
                for _, p in self.entries()]

    def choose(self, title):
        for number, entry in self.entries():
            if entry.get("label", "").replace("_", "") == title:
                _call(self.owner, self.properties["Menu"], MENU, "Event", GLib.Variant(
                    "(isvu)", (number, "clicked", GLib.Variant("s", ""), 0)))
                return
        raise LookupError("no entry %r in %r" % (title, self.titles()))


def icons():
    """The icons that are in the tray now."""
    items = _properties(WATCHER, "/StatusNotifierWatcher", WATCHER)["RegisteredStatusNotifierItems"]
    return [TrayIcon(item) for item in items]
