"""Prints what assistive programs are told of a program: a line each with depth, role, name, description and place in
pixels (left, top, width, height), by tabs. With a second argument, does what activating the element of that name does.
"""

import sys

import gi

gi.require_version("Gio", "2.0")
from gi.repository import Gio, GLib

ROOT = "/org/a11y/atspi/accessible/root"
ACCESSIBLE = "org.a11y.atspi.Accessible"
COMPONENT = "org.a11y.atspi.Component"


def call(bus, place, interface, method, arguments=None):
    owner, path = place
    answer = bus.call_sync(owner, path, interface, method, arguments, None, Gio.DBusCallFlags.NONE, 5000, None)
    return answer.unpack()[0] if answer.n_children() else None


def text_of(bus, place, text):
    arguments = GLib.Variant("(ss)", (ACCESSIBLE, text))
    return call(bus, place, "org.freedesktop.DBus.Properties", "Get", arguments).replace("\n", " ")


def extents_of(bus, place):
    if COMPONENT not in call(bus, place, ACCESSIBLE, "GetInterfaces"):
        return (0, 0, 0, 0)
    on_screen = GLib.Variant("(u)", (0,))
    return call(bus, place, COMPONENT, "GetExtents", on_screen)


def children_of(bus, place):
    return call(bus, place, ACCESSIBLE, "GetChildren")


def walk(bus, place, depth=0):
    yield depth, place, call(bus, place, ACCESSIBLE, "GetRoleName"), text_of(bus, place, "Name")
    for child in children_of(bus, place):
        yield from walk(bus, child, depth + 1)


def main():
    program, *pressed = sys.argv[1:]
    session = Gio.bus_get_sync(Gio.BusType.SESSION, None)
    address = call(session, ("org.a11y.Bus", "/org/a11y/bus"), "org.a11y.Bus", "GetAddress")
    flags = Gio.DBusConnectionFlags.AUTHENTICATION_CLIENT | Gio.DBusConnectionFlags.MESSAGE_BUS_CONNECTION
    bus = Gio.DBusConnection.new_for_address_sync(address, flags, None, None)
    for application in children_of(bus, ("org.a11y.atspi.Registry", ROOT)):
        if text_of(bus, application, "Name") != program:
            continue
        for depth, place, role, name in walk(bus, application):
            if not pressed:
                extents = " ".join(map(str, extents_of(bus, place)))
                print(depth, role, name, text_of(bus, place, "Description"), extents, sep="\t")
            elif name == pressed[0]:
                call(bus, place, "org.a11y.atspi.Action", "DoAction", GLib.Variant("(i)", (0,)))
                return


main()
