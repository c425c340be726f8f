"""A wxWidgets program with a tray icon. What happens to it goes, a line each, into the file that its argument
names."""

import sys

import wx
import wx.adv


def note(text):
    with open(sys.argv[1], "a", encoding="utf-8") as file:
        file.write(text + "\n")


def picture():
    bitmap = wx.Bitmap.FromRGBA(22, 22, 0, 0, 0, 0)
    context = wx.GraphicsContext.Create(wx.MemoryDC(bitmap))
    context.SetBrush(wx.Brush(wx.Colour(124, 58, 237)))
    context.DrawRoundedRectangle(1, 1, 20, 20, 5)
    context.Flush()
    del context
    icon = wx.Icon()
    icon.CopyFromBitmap(bitmap)
    return icon


class Tray(wx.adv.TaskBarIcon):
    def __init__(self):
        super().__init__()
        self.SetIcon(picture(), "A wx program")
        self.Bind(wx.adv.EVT_TASKBAR_LEFT_DOWN, lambda event: self.PopupMenu(self.CreatePopupMenu()))

    def CreatePopupMenu(self):
        menu = wx.Menu()
        for name in ("Hello", "World"):
            entry = menu.Append(wx.ID_ANY, name)
            self.Bind(wx.EVT_MENU, lambda event, name=name: note(name), entry)
        return menu


application = wx.App()
frame = wx.Frame(None)
tray = Tray()
application.MainLoop()
