#include "hidden_items/other_app_menu.h"

#include "platform/process_info.h"
#include "platform/window_server.h"

#include <algorithm>

namespace velmo {

namespace {

/// Lower windows at that level are not menus.
constexpr double menuHeightLimit = 20;

}  // namespace

bool isOtherAppMenuOpen(const Platform& platform) {
    const auto windows = platform.windowServer.windowList(WindowListOption::onScreenOnly);
    if (!windows)
        return false;
    const auto ownPID = platform.processInfo.processIdentifier();
    return std::any_of(windows->begin(), windows->end(), [ownPID](const WindowListEntry& entry) {
        return entry.layer == window_layer::popUpMenu && entry.ownerPID && *entry.ownerPID != ownPID &&
               entry.bounds && entry.bounds->standardized().height > menuHeightLimit;
    });
}

}  // namespace velmo
