#include "hidden_items/menu_bar_items.h"

#include "hidden_items/menu_bar_rect.h"
#include "platform/window_server.h"

#include <algorithm>
#include <cstdlib>
#include <limits>

namespace velmo {

namespace {

constexpr double minItemWidth = 4;
/// Nothing as wide as this is an icon.
constexpr double itemWidthLimit = 500;
constexpr double minItemHeight = 12;
constexpr double maxItemHeight = 48;

bool isMenuBarItem(const WindowListEntry& entry, const Rect& menuBar,
                   const std::vector<ClosedInterval>& excludedRanges) {
    if (entry.layer != window_layer::status || !entry.bounds)
        return false;
    const Rect bounds = entry.bounds->standardized();
    if (!(bounds.width >= minItemWidth && bounds.width < itemWidthLimit))
        return false;
    if (!(bounds.height >= minItemHeight && bounds.height <= maxItemHeight))
        return false;
    if (!bounds.intersects(menuBar))
        return false;
    return std::none_of(excludedRanges.begin(), excludedRanges.end(),
                        [&bounds](const ClosedInterval& range) { return range.contains(bounds.midX()); });
}

std::uint32_t windowID(const WindowListEntry& entry) {
    const std::int64_t number = entry.number.value_or(0);
    if (number < 0 || number > std::numeric_limits<std::uint32_t>::max())
        std::abort();
    return static_cast<std::uint32_t>(number);
}

}  // namespace

std::vector<MenuBarItemInfo> currentMenuBarItems(const Screen& screen,
                                                 const std::vector<ClosedInterval>& excludedRanges,
                                                 const Platform& platform) {
    const Rect menuBar = menuBarRect(screen, platform);
    const auto windows = platform.windowServer.windowList(WindowListOption::onScreenOnly);
    std::vector<MenuBarItemInfo> items;
    if (!windows)
        return items;
    for (const WindowListEntry& entry : *windows) {
        if (isMenuBarItem(entry, menuBar, excludedRanges))
            items.push_back({windowID(entry), entry.ownerPID.value_or(0), entry.ownerName.value_or("Unknown"),
                             entry.name, *entry.bounds, entry.isOnScreen.value_or(true)});
    }
    std::stable_sort(items.begin(), items.end(), [](const MenuBarItemInfo& a, const MenuBarItemInfo& b) {
        return a.bounds.standardized().minX() < b.bounds.standardized().minX();
    });
    return items;
}

}  // namespace velmo
