"""The accessibility tree of a program; every access queries it again."""

import buses
from gi.repository import Gio, GLib

PREFIX = "org.a11y.atspi."
ROOT = ("org.a11y.atspi.Registry", "/org/a11y/atspi/accessible/root")
REGISTRY = ("org.a11y.atspi.Registry", "/org/a11y/atspi/registry", "org.a11y.atspi.Registry")
NULL_PATH = "/org/a11y/atspi/null"

# Positions in the protocol's set of states.
STATES = {
    "active": 1, "checked": 4, "enabled": 8, "focusable": 11, "focused": 12, "selected": 23, "sensitive": 24, "showing": 25
}


class Gone(Exception):
    """The item, or its program, does not exist any more."""


class Node:
    """One item of the tree: a window, a button, a text."""

    def __init__(self, bus, owner, path):
        self._bus, self._owner, self._path = bus, owner, path

    def __eq__(self, other):
        return (self._owner, self._path) == (other._owner, other._path)

    def __hash__(self):
        return hash((self._owner, self._path))

    def _call(self, interface, method, arguments=None):
        try:
            return buses.call(self._bus, self._owner, self._path, interface, method, arguments)
        except GLib.Error as error:
            raise Gone(error.message) from error

    def _property(self, interface, name):
        arguments = GLib.Variant("(ss)", (PREFIX + interface, name))
        return self._call("org.freedesktop.DBus.Properties", "Get", arguments)[0]

    @property
    def name(self):
        return self._property("Accessible", "Name")

    @property
    def process(self):
        """The number of the process that it belongs to."""
        try:
            return buses.ask(self._bus, "GetConnectionUnixProcessID", self._owner)
        except GLib.Error as error:
            raise Gone(error.message) from error

    @property
    def description(self):
        return self._property("Accessible", "Description")

    @property
    def role(self):
        return self._call(PREFIX + "Accessible", "GetRoleName")[0]

    @property
    def children(self):
        references = self._call(PREFIX + "Accessible", "GetChildren")[0]
        return [Node(self._bus, owner, path) for owner, path in references if path != NULL_PATH]

    def is_(self, state):
        low, high = self._call(PREFIX + "Accessible", "GetState")[0]
        return bool((low | high << 32) >> STATES[state] & 1)

    @property
    def extents(self):
        """x, y, width and height on the screen."""
        return self._call(PREFIX + "Component", "GetExtents", GLib.Variant("(u)", (0,)))[0]

    def do_default_action(self):
        self._call(PREFIX + "Action", "DoAction", GLib.Variant("(i)", (0,)))

    def do_action(self, name):
        names = [action[0] for action in self._call(PREFIX + "Action", "GetActions")[0]]
        self._call(PREFIX + "Action", "DoAction", GLib.Variant("(i)", (names.index(name),)))

    @property
    def value(self):
        """A number, or None for what has none."""
        has_value = PREFIX + "Value" in self._call(PREFIX + "Accessible", "GetInterfaces")[0]
        return self._property("Value", "CurrentValue") if has_value else None

    @property
    def text(self):
        return self._call(PREFIX + "Text", "GetText", GLib.Variant("(ii)", (0, -1)))[0]

    @text.setter
    def text(self, value):
        self._call(PREFIX + "EditableText", "SetTextContents", GLib.Variant("(s)", (value,)))

    def grab_focus(self):
        self._call(PREFIX + "Component", "GrabFocus")

    def all(self, role=None, name=None):
        """All visible items in this one, itself included, with the given role and name."""
        found = []
        self._collect(role, name, found)
        return found

    def _collect(self, role, name, found):
        try:
            # A hidden item has no visible children; an application is neither shown nor hidden.
            if not self.is_("showing") and self.role != "application":
                return
            if (role is None or self.role == role) and (name is None or self.name == name):
                found.append(self)
            children = self.children
        except Gone:
            return
        for child in children:
            child._collect(role, name, found)

    def find(self, role=None, name=None):
        """The first such item, or None."""
        return next(iter(self.all(role, name)), None)

    def outline(self, depth=0):
        """The tree as text, for debugging."""
        try:
            states = [state for state in STATES if self.is_(state)]
            line = f'{"  " * depth}{self.role} "{self.name}" ({self.description}) {states}\n'
            return line + "".join(child.outline(depth + 1) for child in self.children)
        except Gone as gone:
            return f'{"  " * depth}gone: {gone}\n'


def applications(bus):
    return Node(bus, *ROOT).children


class Listener:
    """Collects items that appear. Menus are below no window, so that they cannot be found otherwise. Programs that
    are started later report everything."""

    def __init__(self, bus):
        self._bus = bus
        self._appeared = []
        bus.signal_subscribe(
            None, PREFIX + "Event.Object", "StateChanged", None, "showing", Gio.DBusSignalFlags.NONE, self._hear
        )
        events = GLib.Variant("(sass)", ("object:state-changed:showing", [], ""))
        # The first call starts the registry.
        bus.call_sync(*REGISTRY, "RegisterEvent", events, None, Gio.DBusCallFlags.NONE, buses.CALL_PATIENCE, None)

    def next(self, role, name=None):
        """The next item of the role and the name that has appeared, or None. What appeared before it is forgotten."""
        while GLib.MainContext.default().iteration(False):
            pass
        while self._appeared:
            node = self._appeared.pop(0)
            try:
                if node.role == role and name in (None, node.name):
                    return node
            except Gone:
                pass
        return None

    def _hear(self, _bus, owner, path, _interface, _signal, values):
        if values.unpack()[1]:
            self._appeared.append(Node(self._bus, owner, path))
