"""Writes to a file what assistive programs are told of the children of the element of a name, a line each."""

import sys

import gi

gi.require_version("Gio", "2.0")
from gi.repository import Gio, GLib

ACCESSIBLE = "org.a11y.atspi.Accessible"
REGISTRY = "org.a11y.atspi.Registry"


def main():
    path, watched = sys.argv[1:]
    session = Gio.bus_get_sync(Gio.BusType.SESSION, None)
    address = session.call_sync(
        "org.a11y.Bus", "/org/a11y/bus", "org.a11y.Bus", "GetAddress", None, None, Gio.DBusCallFlags.NONE, 5000, None
    ).unpack()[0]
    flags = Gio.DBusConnectionFlags.AUTHENTICATION_CLIENT | Gio.DBusConnectionFlags.MESSAGE_BUS_CONNECTION
    bus = Gio.DBusConnection.new_for_address_sync(address, flags, None, None)

    def note(line):
        with open(path, "a", encoding="utf-8") as file:
            file.write(line + "\n")

    def heard(_bus, sender, place, _interface, _signal, arguments):
        question = GLib.Variant("(ss)", (ACCESSIBLE, "Name"))
        properties = "org.freedesktop.DBus.Properties"
        answer = bus.call_sync(sender, place, properties, "Get", question, None, Gio.DBusCallFlags.NONE, 5000, None)
        if answer.unpack()[0] == watched:
            note(arguments.unpack()[0])

    event = "org.a11y.atspi.Event.Object"
    bus.signal_subscribe(None, event, "ChildrenChanged", None, None, Gio.DBusSignalFlags.NONE, heard)
    wanted = GLib.Variant("(s)", ("object:children-changed",))
    place = "/org/a11y/atspi/registry"
    bus.call_sync(REGISTRY, place, REGISTRY, "RegisterEvent", wanted, None, Gio.DBusCallFlags.NONE, 5000, None)
    note("listens")
    GLib.MainLoop().run()


main()
