"""Copies two texts to the clipboard, one after the other. Each text that comes there, from whomever, goes into the file
that its argument names, on a line."""

import sys

import gi

gi.require_version("Gtk", "3.0")
from gi.repository import Gdk, GLib, Gtk  # noqa: E402


def note(text):
    with open(sys.argv[1], "a", encoding="utf-8") as file:
        file.write(text + "\n")


clipboard = Gtk.Clipboard.get(Gdk.SELECTION_CLIPBOARD)
clipboard.connect("owner-change", lambda *arguments: clipboard.request_text(lambda _, text: note(text or "nothing")))
clipboard.set_text("first", -1)
# Others look at it now and then only.
GLib.timeout_add(1500, lambda: clipboard.set_text("second", -1))
Gtk.main()
