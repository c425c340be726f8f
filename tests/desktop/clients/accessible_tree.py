"""Prints what assistive programs are told of a program: a line each with depth, role and name, by tabs.
With a second argument, does what activating the element of that name does.
"""

import sys

import gi

gi.require_version("Gio", "2.0")
from gi.repository import Gio, GLib

ROOT = "/org/a11y/atspi/accessible/root"
ACCESSIBLE = "org.a11y.atspi.Accessible"


def call(bus, place, interface, method, arguments=None):
    owner, path = place
    answer = bus.call_sync(owner, path, interface, method, arguments, None, Gio.DBusCallFlags.NONE, 5000, None)
    return answer.unpack()[0] if answer.n_children() else None


def name_of(bus, place):
    arguments = GLib.Variant("(ss)", (ACCESSIBLE, "Name"))
    return call(bus, place, "org.freedesktop.DBus.Properties", "Get", arguments)


def children_of(bus, place):
    return call(bus, place, ACCESSIBLE, "GetChildren")


def walk(bus, place, depth=0):
    yield depth, place, call(bus, place, ACCESSIBLE, "GetRoleName"), name_of(bus, place)
    for child in children_of(bus, place):
        yield from walk(bus, child, depth + 1)


def main():
    program, *pressed = sys.argv[1:]
    session = Gio.bus_get_sync(Gio.BusType.SESSION, None)
    address = call(session, ("org.a11y.Bus", "/org/a11y/bus"), "org.a11y.Bus", "GetAddress")
    flags = Gio.DBusConnectionFlags.AUTHENTICATION_CLIENT | Gio.DBusConnectionFlags.MESSAGE_BUS_CONNECTION
    bus = Gio.DBusConnection.new_for_address_sync(address, flags, None, None)
    for application in children_of(bus, ("org.a11y.atspi.Registry", ROOT)):
        if name_of(bus, application) != program:
            continue
        for depth, place, role, name in walk(bus, application):
            if not pressed:
                print(depth, role, name.replace("\n", " "), sep="\t")
            elif name == pressed[0]:
                call(bus, place, "org.a11y.atspi.Action", "DoAction", GLib.Variant("(i)", (0,)))
                return


main()
