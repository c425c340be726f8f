"""A GTK program with an indicator. What happens to it goes, a line each, into the file that its argument names."""

import sys

import gi

gi.require_version("Gtk", "3.0")
gi.require_version("AyatanaAppIndicator3", "0.1")
from gi.repository import AyatanaAppIndicator3, Gtk  # noqa: E402


def note(text):
    with open(sys.argv[1], "a", encoding="utf-8") as file:
        file.write(text + "\n")


indicator = AyatanaAppIndicator3.Indicator.new(
    "velmo-indicator", "audio-volume-high-symbolic", AyatanaAppIndicator3.IndicatorCategory.HARDWARE
)
indicator.set_status(AyatanaAppIndicator3.IndicatorStatus.ACTIVE)
indicator.set_title("Volume")

menu = Gtk.Menu()
first = Gtk.MenuItem.new_with_mnemonic("_Mute")
first.connect("activate", lambda item: note("mute"))
menu.append(first)
louder = Gtk.CheckMenuItem.new_with_label("Louder")
louder.connect("toggled", lambda item: note("louder on" if item.get_active() else "louder off"))
menu.append(louder)
menu.append(Gtk.SeparatorMenuItem())
outputs = Gtk.MenuItem.new_with_label("Output")
submenu = Gtk.Menu()
for name in ("Speakers", "Headphones"):
    entry = Gtk.MenuItem.new_with_label(name)
    entry.connect("activate", lambda item: note(item.get_label()))
    submenu.append(entry)
outputs.set_submenu(submenu)
menu.append(outputs)
menu.show_all()
indicator.set_menu(menu)
indicator.set_secondary_activate_target(first)
indicator.connect("scroll-event", lambda *arguments: note(f"scroll {arguments[1]} {int(arguments[2])}"))
Gtk.main()
