"""The program's window as an assistive program sees it: nodes with names, roles, states and texts.

Speaks to the accessibility bus directly, nothing is cached: what a node says is what the program answers now.
The desktop that carries the bus is in display.py.
"""

from gi.repository import Gio, GLib

# Numbers of the accessibility bus; the names that programs send differ between releases, the numbers do not.
ROLES = {2: "alert", 7: "check box", 11: "combo box", 16: "dialog", 19: "file chooser", 20: "filler", 23: "frame",
         27: "image", 29: "label", 31: "list", 32: "list item", 33: "menu", 34: "menu bar", 35: "menu item",
         39: "panel", 41: "popup menu", 43: "button", 44: "radio button", 48: "scroll bar", 49: "scroll pane",
         50: "separator", 52: "spin button", 53: "split pane", 54: "status bar", 55: "table", 56: "table cell",
         57: "column header", 61: "text", 62: "toggle button", 64: "tool tip", 65: "tree", 66: "tree table",
         67: "unknown", 69: "window", 75: "application", 79: "entry", 91: "tree item", 98: "list", 99: "panel",
         101: "notification", 116: "label"}
STATES = {1: "active", 4: "checked", 7: "editable", 8: "enabled", 10: "expanded", 11: "focusable", 12: "focused",
          16: "modal", 17: "multi-line", 23: "selected", 24: "sensitive", 25: "showing", 30: "visible",
          39: "default", 43: "read-only"}
ITEM_VIEWS = ("list", "table", "tree", "tree table")  # their children are rows, of which there may be thousands
LABELLED_BY = 2
ACCESSIBLE = "org.a11y.atspi.Accessible"


class Gone(LookupError):
    """The node, or the program, is no longer there."""


class Node:
    """One control. Every attribute asks the program at the time it is read; Gone is raised when it is not there."""

    def __init__(self, bus, owner, path):
        self.bus, self.owner, self.path = bus, owner, path

    def call(self, interface, method, arguments=None, seconds=20):
        try:
            answer = self.bus.call_sync(self.owner, self.path, interface, method, arguments, None,
                                        Gio.DBusCallFlags.NO_AUTO_START, int(seconds * 1000), None)
        except GLib.Error as error:
            raise Gone(f"{method} of {self.path}: {error.message}") from error
        return answer.unpack()

    def get(self, name, interface=ACCESSIBLE):
        return self.call("org.freedesktop.DBus.Properties", "Get", GLib.Variant("(ss)", (interface, name)))[0]

    name = property(lambda self: self.get("Name"))
    description = property(lambda self: self.get("Description"))
    child_count = property(lambda self: self.get("ChildCount"))
    role = property(lambda self: ROLES.get(number := self.call(ACCESSIBLE, "GetRole")[0], f"role {number}"))
    interfaces = property(lambda self: [name.rsplit(".", 1)[1] for name in self.call(ACCESSIBLE, "GetInterfaces")[0]])

    @property
    def states(self):
        low, high = (self.call(ACCESSIBLE, "GetState")[0] + [0, 0])[:2]
        bits = low | high << 32
        return {name for number, name in STATES.items() if bits >> number & 1}

    showing = property(lambda self: "showing" in self.states)
    enabled = property(lambda self: "sensitive" in self.states)
    focused = property(lambda self: "focused" in self.states)

    @property
    def children(self):
        return [Node(self.bus, *child) for child in self.call(ACCESSIBLE, "GetChildren")[0]]

    def child(self, index):
        return Node(self.bus, *self.call(ACCESSIBLE, "GetChildAtIndex", GLib.Variant("(i)", (index,)))[0])

    @property
    def parent(self):
        return Node(self.bus, *self.get("Parent"))

    @property
    def text(self):
        """The content of a text box, the chosen entry of a combo box, else the name."""
        offered = self.interfaces
        if "Text" in offered:
            return self.call("org.a11y.atspi.Text", "GetText", GLib.Variant("(ii)", (0, -1)))[0]
        return self.name

    @property
    def labels(self):
        """The texts of the labels that belong to a combo box: how it is called, its own name being its entry."""
        if self.role != "combo box":
            return []
        targets = [Node(self.bus, *target) for kind, targets in self.call(ACCESSIBLE, "GetRelationSet")[0]
                   if kind == LABELLED_BY for target in targets]
        return [target.name for target in targets if target.role == "label"]  # a frame around it is said to be one, too

    @property
    def selected_rows(self):
        if "Table" in self.interfaces:
            return self.call("org.a11y.atspi.Table", "GetSelectedRows")[0]
        return [index for index, child in enumerate(self.children) if "selected" in child.states]

    @property
    def value(self):
        """The position of a scroll bar."""
        return self.get("CurrentValue", "org.a11y.atspi.Value")

    # What an assistive program does

    def press(self, action="Press"):
        """Presses a button. Does not wait: the program may answer only when the dialog that it opens has ended."""
        names = [name for name, _, _ in self.call("org.a11y.atspi.Action", "GetActions")[0]]
        self.bus.call(self.owner, self.path, "org.a11y.atspi.Action", "DoAction",
                      GLib.Variant("(i)", (names.index(action),)), None, Gio.DBusCallFlags.NONE, -1, None, None)
        self.bus.flush_sync(None)

    def set_text(self, text):
        self.call("org.a11y.atspi.EditableText", "SetTextContents", GLib.Variant("(s)", (text,)))

    def select_row(self, index):
        self.call("org.a11y.atspi.Table", "AddRowSelection", GLib.Variant("(i)", (index,)))

    def set_value(self, value):
        self.call("org.freedesktop.DBus.Properties", "Set",
                  GLib.Variant("(ssv)", ("org.a11y.atspi.Value", "CurrentValue", GLib.Variant("d", value))))

    @property
    def extents(self):
        """x, y, width, height on the screen."""
        return self.call("org.a11y.atspi.Component", "GetExtents", GLib.Variant("(u)", (0,)))[0]

    def walk(self, hidden=False):
        """This node and those below it, rows of lists left out; with what does not show only when hidden."""
        yield self
        try:
            if self.role in ITEM_VIEWS:
                return
            below = self.children
        except Gone:
            return
        for node in below:
            try:
                if hidden or node.showing:
                    yield from node.walk(hidden)
            except Gone:
                continue

    def dump(self, depth=0, rows=40):
        """The tree from here as text, one line a node; of a list, its first rows."""
        try:
            role, states = self.role, self.states
            shown = " ".join(sorted(states & {"focused", "selected", "default", "checked", "modal", "read-only"}))
            line = f"{'  ' * depth}{role} {self.name!r}"
            if self.description:
                line += f" ({self.description})"
            if "Text" in self.interfaces:
                line += f" text {self.text!r}"
            line += f" [{shown}]" if shown else ""
            line += "" if "showing" in states else " hidden"
            line += "" if "sensitive" in states else " disabled"
            lines, count = [line], self.child_count
            listed = min(count, rows) if role in ITEM_VIEWS else count
            for index in range(listed):
                lines += self.child(index).dump(depth + 1, rows)
            if listed < count:
                lines.append(f"{'  ' * (depth + 1)}… {count - listed} rows more")
            return lines
        except Gone as error:
            return [f"{'  ' * depth}gone: {error}"]


class Reader:
    """The connection to the accessibility bus of one desktop. address: of its session bus."""

    def __init__(self, address):
        session = self._connect(address)
        launcher = Node(session, "org.a11y.Bus", "/org/a11y/bus")
        self.bus = self._connect(session.call_sync("org.a11y.Bus", launcher.path, "org.a11y.Bus", "GetAddress", None,
                                                   None, Gio.DBusCallFlags.NONE, 30000, None).unpack()[0])
        session.close_sync(None)

    @staticmethod
    def _connect(address):
        flags = Gio.DBusConnectionFlags.AUTHENTICATION_CLIENT | Gio.DBusConnectionFlags.MESSAGE_BUS_CONNECTION
        bus = Gio.DBusConnection.new_for_address_sync(address, flags, None, None)
        bus.set_exit_on_close(False)
        return bus

    def application(self, pid):
        """The root node of the program with this process number, or None while it has not announced itself."""
        try:
            registry = Node(self.bus, "org.a11y.atspi.Registry", "/org/a11y/atspi/accessible/root")
            driver = Node(self.bus, "org.freedesktop.DBus", "/org/freedesktop/DBus")
            for node in registry.children:
                owner = GLib.Variant("(s)", (node.owner,))
                if driver.call("org.freedesktop.DBus", "GetConnectionUnixProcessID", owner)[0] == pid:
                    return node
        except Gone:
            pass
        return None

    def send_key(self, symbol):
        """A key of the assistive program's own, given by its X keysym number, to the control with the focus."""
        keys = Node(self.bus, "org.a11y.atspi.Registry", "/org/a11y/atspi/registry/deviceeventcontroller")
        press_and_release_symbol = 3
        keys.call("org.a11y.atspi.DeviceEventController", "GenerateKeyboardEvent",
                  GLib.Variant("(isu)", (symbol, "", press_and_release_symbol)))

    def close(self):
        if not self.bus.is_closed():
            self.bus.close_sync(None)
