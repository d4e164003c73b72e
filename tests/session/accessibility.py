"""The program as a screen reader sees it."""
import gi

gi.require_version("Atspi", "2.0")
from gi.repository import Atspi, GLib  # noqa: E402

APPLICATION = "horalo"


def nodes():
    """Every node of the program, from the top."""
    # What the library remembers is of a program that may have ended since.
    while GLib.MainContext.default().iteration(False):
        pass
    desktop = Atspi.get_desktop(0)
    desktop.clear_cache()
    for i in range(desktop.get_child_count()):
        application = desktop.get_child_at_index(i)
        if not application or application.get_name() != APPLICATION:
            continue
        waiting = [application]
        while waiting:
            node = waiting.pop(0)
            yield node
            try:
                children = (node.get_child_at_index(j) for j in range(node.get_child_count()))
                waiting.extend(child for child in children if child)
            except GLib.Error:
                pass


def has(node, state):
    return node.get_state_set().contains(getattr(Atspi.StateType, state))


def find_all(role, name=None, showing=True):
    found = []
    for node in nodes():
        try:
            if node.get_role_name() == role and (name is None or node.get_name() == name) and (
                    not showing or has(node, "SHOWING")):
                found.append(node)
        except GLib.Error:
            pass
    return found


def find(role, name=None, showing=True):
    return (find_all(role, name, showing) or [None])[0]


def text_of(node):
    interface = node.get_text_iface()
    return Atspi.Text.get_text(interface, 0, -1) if interface else None


def bounds(node):
    """x, y, width, height on the screen."""
    place = Atspi.Component.get_extents(node.get_component_iface(), Atspi.CoordType.SCREEN)
    return place.x, place.y, place.width, place.height


def press(node):
    interface = node.get_action_iface()
    names = [Atspi.Action.get_action_name(interface, i)
             for i in range(Atspi.Action.get_n_actions(interface))]
    for wanted in ("Press", "Toggle", "ShowMenu"):
        if wanted in names:
            return Atspi.Action.do_action(interface, names.index(wanted))
    raise LookupError("no action to press in %r" % names)


def rows():
    """The five rows as (label, value, is selected)."""
    found = []
    for node in find_all("list item"):
        label, _, value = node.get_name().partition(": ")
        found.append((label, value, has(node, "SELECTED")))
    return found


def row_values():
    return {label: value for label, value, _ in rows()}


def selected_row():
    return next((i for i, (_, _, selected) in enumerate(rows()) if selected), None)


def labels():
    return [node.get_name() for node in find_all("label")]


def input_field():
    return find("text", "Enter timestamp or date...")


def input_text():
    field = input_field()
    return text_of(field) if field else None
