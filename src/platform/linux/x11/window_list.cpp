#include "window_list.h"

#include "linux/process/linux_process_info.h"
#include "linux/x11/open_menus.h"

namespace velmo::x11 {

std::optional<std::vector<WindowListEntry>> WindowList::windowList(WindowListOption /*option*/) const {
    std::vector<WindowListEntry> entries;
    const auto& toolkit = bar_.toolkit();
    for (auto& menu : openMenus(bar_.connection())) {
        // We draw it, but it is another program's menu.
        if (toolkit.isExportedMenuOpen() && menu.processIdentifier == bar_.processIdentifier())
            menu.processIdentifier = toolkit.exportedMenuOwner();
        WindowListEntry entry;
        entry.number = menu.window;
        entry.layer = window_layer::popUpMenu;
        entry.ownerPID = menu.processIdentifier;
        if (menu.processIdentifier)
            entry.ownerName = processName(*menu.processIdentifier);
        entry.bounds = bar_.screens().toGlobal(menu.area);
        entry.isOnScreen = true;
        entries.push_back(entry);
    }
    appendItems(entries);
    return entries;
}

void WindowList::appendItems(std::vector<WindowListEntry>& entries) const {
    bar_.layOutIfNeeded();
    const Rect screen = bar_.screens().toGlobal(bar_.screens().primary());
    for (const auto* item : bar_.items()) {
        // What it shows may reach farther than its place.
        if (!item->place() || !bar_.screens().toGlobal(bar_.onRoot(*item->place())).intersects(screen))
            continue;
        auto entry = item->describe();
        entry.layer = window_layer::status;
        PixelRect area = bar_.shownArea(*item);
        area.x += item->place()->x;
        area.y += item->place()->y;
        entry.bounds = bar_.screens().toGlobal(bar_.onRoot(area));
        entry.isOnScreen = true;
        entries.push_back(std::move(entry));
    }
}

}  // namespace velmo::x11
