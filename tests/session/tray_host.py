"""A StatusNotifier watcher and host without a window: the tray of the test desktop."""
import os

import gi

gi.require_version("Gio", "2.0")
from gi.repository import Gio, GLib  # noqa: E402

NAME = "org.kde.StatusNotifierWatcher"
PATH = "/StatusNotifierWatcher"
INTERFACE = """
<node>
  <interface name="org.kde.StatusNotifierWatcher">
    <method name="RegisterStatusNotifierItem"><arg type="s" direction="in"/></method>
    <method name="RegisterStatusNotifierHost"><arg type="s" direction="in"/></method>
    <property name="RegisteredStatusNotifierItems" type="as" access="read"/>
    <property name="IsStatusNotifierHostRegistered" type="b" access="read"/>
    <property name="ProtocolVersion" type="i" access="read"/>
    <signal name="StatusNotifierItemRegistered"><arg type="s"/></signal>
    <signal name="StatusNotifierItemUnregistered"><arg type="s"/></signal>
    <signal name="StatusNotifierHostRegistered"/>
  </interface>
</node>"""


class TrayHost:
    def __init__(self, loop):
        self.loop = loop
        self.items = {}  # item -> the watch on its owner
        Gio.bus_own_name(Gio.BusType.SESSION, "org.kde.StatusNotifierHost-%d" % os.getpid(),
                         Gio.BusNameOwnerFlags.NONE, None, None, None)
        Gio.bus_own_name(Gio.BusType.SESSION, NAME, Gio.BusNameOwnerFlags.NONE, self.on_bus,
                         lambda bus, _: self.emit(bus, "StatusNotifierHostRegistered"),
                         lambda *_: loop.quit())

    @staticmethod
    def emit(bus, signal, *arguments):
        body = GLib.Variant("(%s)" % ("s" * len(arguments)), arguments) if arguments else None
        bus.emit_signal(None, PATH, NAME, signal, body)

    def on_bus(self, bus, _name):
        interface = Gio.DBusNodeInfo.new_for_xml(INTERFACE).interfaces[0]
        bus.register_object(PATH, interface, self.on_call, self.on_get, None)

    def on_call(self, bus, sender, _path, _interface, method, parameters, invocation):
        if method == "RegisterStatusNotifierItem":
            service = parameters.unpack()[0]
            # Either a name on the bus or a path on the caller's own connection.
            item = sender + service if service.startswith("/") else service + "/StatusNotifierItem"
            if item not in self.items:
                owner = item.partition("/")[0]
                self.items[item] = Gio.bus_watch_name_on_connection(
                    bus, owner, Gio.BusNameWatcherFlags.NONE, None, self.on_gone)
                self.emit(bus, "StatusNotifierItemRegistered", item)
        invocation.return_value(None)

    def on_get(self, _bus, _sender, _path, _interface, name):
        return {"RegisteredStatusNotifierItems": GLib.Variant("as", list(self.items)),
                "IsStatusNotifierHostRegistered": GLib.Variant("b", True),
                "ProtocolVersion": GLib.Variant("i", 0)}[name]

    def on_gone(self, bus, owner):
        for item in [i for i in self.items if i.partition("/")[0] == owner]:
            Gio.bus_unwatch_name(self.items.pop(item))
            self.emit(bus, "StatusNotifierItemUnregistered", item)


if __name__ == "__main__":
    main_loop = GLib.MainLoop()
    host = TrayHost(main_loop)
    main_loop.run()
