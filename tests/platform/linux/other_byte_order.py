"""A program with an item on the bus whose address is the first argument. It speaks in the byte order that this machine
does not have. Its icon has as many pixels a side as the second argument says.
"""

import sys

import gi

gi.require_version("Gio", "2.0")
from gi.repository import Gio, GLib  # noqa: E402

INTERFACE = """<node><interface name="org.freedesktop.DBus.Properties"><method name="GetAll">
<arg type="s" direction="in"/><arg type="a{sv}" direction="out"/></method></interface></node>"""
ORDERS = {"little": Gio.DBusMessageByteOrder.BIG_ENDIAN, "big": Gio.DBusMessageByteOrder.LITTLE_ENDIAN}


def properties(side):
    pixels = bytes([0xFF, 0x12, 0x34, 0x56]) * (side * side)
    builder = GLib.VariantBuilder(GLib.VariantType("(iiay)"))
    builder.add_value(GLib.Variant("i", side))
    builder.add_value(GLib.Variant("i", side))
    builder.add_value(GLib.Variant.new_from_bytes(GLib.VariantType("ay"), GLib.Bytes.new(pixels), True))
    pixmaps = GLib.VariantBuilder(GLib.VariantType("a(iiay)"))
    pixmaps.add_value(builder.end())
    return {
        "Unknown": GLib.Variant("ad", [1.5, 2.5, 3.5]),
        "Id": GLib.Variant("s", "foreign"),
        "IconPixmap": pixmaps.end(),
        "Title": GLib.Variant("s", "Foreign"),
    }


def answer(connection, sender, path, interface, member, arguments, invocation):
    reply = Gio.DBusMessage.new_method_reply(invocation.get_message())
    reply.set_byte_order(ORDERS[sys.byteorder])
    reply.set_body(GLib.Variant("(a{sv})", (properties(int(sys.argv[2])),)))
    connection.send_message(reply, Gio.DBusSendMessageFlags.NONE)


flags = Gio.DBusConnectionFlags.AUTHENTICATION_CLIENT | Gio.DBusConnectionFlags.MESSAGE_BUS_CONNECTION
bus = Gio.DBusConnection.new_for_address_sync(sys.argv[1], flags, None, None)
item = "/StatusNotifierItem"
bus.register_object(item, Gio.DBusNodeInfo.new_for_xml(INTERFACE).interfaces[0], answer, None, None)
watcher = "org.kde.StatusNotifierWatcher"
bus.call(
    watcher,
    "/StatusNotifierWatcher",
    watcher,
    "RegisterStatusNotifierItem",
    GLib.Variant("(s)", (item,)),
    None,
    Gio.DBusCallFlags.NONE,
    -1,
    None,
)
GLib.MainLoop().run()
