"""A settings portal that only knows the colour scheme."""

import pathlib
import sys

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[2] / "tests" / "EndToEnd"))
import buses
from gi.repository import Gio, GLib

NAME = "org.freedesktop.portal.Desktop"
PATH = "/org/freedesktop/portal/desktop"
SCHEMES = {"dark": 1, "light": 2}
INTERFACE = Gio.DBusNodeInfo.new_for_xml(
    """<node><interface name="org.freedesktop.portal.Settings">
         <method name="ReadOne">
           <arg type="s" direction="in"/><arg type="s" direction="in"/><arg type="v" direction="out"/>
         </method>
         <method name="Read">
           <arg type="s" direction="in"/><arg type="s" direction="in"/><arg type="v" direction="out"/>
         </method>
         <signal name="SettingChanged"><arg type="s"/><arg type="s"/><arg type="v"/></signal>
       </interface></node>"""
).interfaces[0]


class _Portal:
    def __init__(self, scheme):
        self._scheme = GLib.Variant("u", SCHEMES[scheme])

    def answer(self, _bus, _sender, _path, _interface, method, arguments, invocation):
        if arguments.unpack() != ("org.freedesktop.appearance", "color-scheme"):
            invocation.return_dbus_error("org.freedesktop.portal.Error.NotFound", "No such setting")
        elif method == "ReadOne":
            invocation.return_value(GLib.Variant("(v)", (self._scheme,)))
        else:
            invocation.return_value(GLib.Variant("(v)", (GLib.Variant("v", self._scheme),)))


def serve(address, scheme):
    """Serves requests on the bus at the address until the process ends; run it in its own process."""
    bus = buses.connect(address)
    bus.register_object(PATH, INTERFACE, _Portal(scheme).answer, None, None)
    Gio.bus_own_name_on_connection(bus, NAME, Gio.BusNameOwnerFlags.NONE, None, None)
    GLib.MainLoop().run()


if __name__ == "__main__":
    serve(*sys.argv[1:])
