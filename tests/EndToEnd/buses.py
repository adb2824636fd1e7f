"""Calls on a message bus."""

from gi.repository import Gio, GLib
from waiting import PATIENCE, wait_for

CALL_PATIENCE = int(PATIENCE * 1_000)  # milliseconds
BUS = "org.freedesktop.DBus"


def connect(address):
    flags = Gio.DBusConnectionFlags
    return Gio.DBusConnection.new_for_address_sync(
        address, flags.AUTHENTICATION_CLIENT | flags.MESSAGE_BUS_CONNECTION, None, None
    )


def call(bus, owner, path, interface, method, arguments=None):
    """The values of the reply; raises GLib.Error when there is none."""
    reply = bus.call_sync(
        owner, path, interface, method, arguments, None, Gio.DBusCallFlags.NO_AUTO_START, CALL_PATIENCE, None
    )
    return reply.unpack()


def ask(bus, method, name):
    """Asks the bus itself about one of its names."""
    return call(bus, BUS, "/org/freedesktop/DBus", BUS, method, GLib.Variant("(s)", (name,)))[0]


def wait_for_name(bus, name):
    wait_for(lambda: ask(bus, "NameHasOwner", name), f"{name} on the bus")
