"""A desktop's portal that has one setting, the colour scheme: the number in the file that its argument names. After
SIGHUP it tells of the number anew.
"""

import signal
import sys

import gi

gi.require_version("Gio", "2.0")
from gi.repository import Gio, GLib

PATH = "/org/freedesktop/portal/desktop"
INTERFACE = "org.freedesktop.portal.Settings"
INTROSPECTION = f"""<node><interface name="{INTERFACE}">
<method name="Read"><arg type="s" direction="in"/><arg type="s" direction="in"/><arg type="v" direction="out"/></method>
<signal name="SettingChanged"><arg type="s"/><arg type="s"/><arg type="v"/></signal>
</interface></node>"""


def scheme():
    with open(sys.argv[1], encoding="utf-8") as file:
        return GLib.Variant("u", int(file.read()))


def answer(_connection, _sender, _path, _interface, _method, arguments, invocation):
    if arguments.unpack() == ("org.freedesktop.appearance", "color-scheme"):
        invocation.return_value(GLib.Variant("(v)", (GLib.Variant("v", scheme()),)))
    else:
        invocation.return_dbus_error("org.freedesktop.portal.Error.NotFound", "no such setting")


def tell():
    arguments = GLib.Variant("(ssv)", ("org.freedesktop.appearance", "color-scheme", scheme()))
    bus.emit_signal(None, PATH, INTERFACE, "SettingChanged", arguments)
    return GLib.SOURCE_CONTINUE


bus = Gio.bus_get_sync(Gio.BusType.SESSION, None)
bus.register_object(PATH, Gio.DBusNodeInfo.new_for_xml(INTROSPECTION).interfaces[0], answer, None, None)
Gio.bus_own_name_on_connection(bus, "org.freedesktop.portal.Desktop", Gio.BusNameOwnerFlags.NONE, None, None)
GLib.unix_signal_add(GLib.PRIORITY_DEFAULT, signal.SIGHUP, tell)
GLib.MainLoop().run()
