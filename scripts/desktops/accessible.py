"""What a screen reader is told: finding things by role and name, and reading them. Asked over D-Bus itself:
the usual library answers its own events in the middle of a question, and has been seen to wait for itself for ever."""

import time

from gi.repository import Gio, GLib

# numbers of states
ACTIVE, FOCUSED, SHOWING = 1, 12, 25
# what positions are relative to
SCREEN, WINDOW = 0, 1
PATIENCE_MS = 10000


class Missing(Exception):
    """What had to come did not."""


def wait_for(what, condition, seconds=60):
    """The first true answer of the condition. What goes away while it is looked at is not there."""
    deadline = time.monotonic() + seconds
    while True:
        try:
            found = condition()
        except (GLib.Error, Missing):
            found = None
        if found:
            return found
        if time.monotonic() > deadline:
            raise Missing(f"no {what} after {seconds} s")
        time.sleep(0.1)


def comes(condition, seconds=3):
    """The same, or nothing when it does not come."""
    try:
        return wait_for("such thing", condition, seconds)
    except Missing:
        return None


class Node:
    """One thing on the screen, or a window, or a program."""

    bus = None

    def __init__(self, owner, path):
        self.owner, self.path = owner, path

    def call(self, interface, method, signature="()", *arguments):
        """The values that a method answers with."""
        return Node.bus.call_sync(self.owner, self.path, "org." + interface, method,
                                  GLib.Variant(signature, arguments), None, Gio.DBusCallFlags.NONE, PATIENCE_MS,
                                  None).unpack()

    def value(self, interface, name):
        return self.call("freedesktop.DBus.Properties", "Get", "(ss)", "org.a11y.atspi." + interface, name)[0]

    def children(self):
        return [Node(*each) for each in self.call("a11y.atspi.Accessible", "GetChildren")[0]]

    def name(self):
        return self.value("Accessible", "Name")

    def role(self):
        return self.call("a11y.atspi.Accessible", "GetRoleName")[0]

    def has(self, state):
        low, high = self.call("a11y.atspi.Accessible", "GetState")[0]
        return bool((high << 32 | low) >> state & 1)

    def text(self):
        return self.call("a11y.atspi.Text", "GetText", "(ii)", 0, -1)[0]

    def extents(self, relative_to):
        return self.call("a11y.atspi.Component", "GetExtents", "(u)", relative_to)[0]

    def centre(self, relative_to):
        x, y, width, height = self.extents(relative_to)
        return x + width // 2, y + height // 2

    def below(self):
        """The node and everything in it, from the outside in; what goes away meanwhile is passed over."""
        yield self
        try:
            children = self.children()
        except GLib.Error:
            return
        for child in children:
            yield from child.below()

    def find(self, name=None, role=None):
        """The first thing that is showing whose name starts like this and whose role, which newer desktops call by
        less words, ends like this."""
        for each in self.below():
            try:
                if ((role is None or each.role().endswith(role)) and (name is None or each.name().startswith(name))
                        and each.has(SHOWING)):
                    return each
            except GLib.Error:
                continue
        return None

    def outline(self, indent=0):
        """All of it as lines of text."""
        states = [word for word, state in (("showing", SHOWING), ("active", ACTIVE), ("focused", FOCUSED))
                  if self.has(state)]
        yield "  " * indent + " ".join([self.role(), f"\"{self.name()}\"", *states])
        for child in self.children():
            yield from child.outline(indent + 1)


def listen():
    """Programs that are started from now on hear that somebody listens."""
    session = Gio.bus_get_sync(Gio.BusType.SESSION)
    address, = session.call_sync("org.a11y.Bus", "/org/a11y/bus", "org.a11y.Bus", "GetAddress", None, None,
                                 Gio.DBusCallFlags.NONE, -1, None).unpack()
    Node.bus = Gio.DBusConnection.new_for_address_sync(
        address, Gio.DBusConnectionFlags.AUTHENTICATION_CLIENT | Gio.DBusConnectionFlags.MESSAGE_BUS_CONNECTION)
    session.call_sync("org.a11y.Bus", "/org/a11y/bus", "org.freedesktop.DBus.Properties", "Set",
                      GLib.Variant("(ssv)", ("org.a11y.Status", "IsEnabled", GLib.Variant("b", True))), None,
                      Gio.DBusCallFlags.NONE, -1, None)


def programs():
    """Every program that speaks to assistive technology."""
    return Node("org.a11y.atspi.Registry", "/org/a11y/atspi/accessible/root").children()


def focused(role):
    """What has the focus, when it is of this role."""
    for program in programs():
        for node in program.below():
            if node.has(FOCUSED) and node.has(SHOWING) and node.role() == role:
                return node
    return None
