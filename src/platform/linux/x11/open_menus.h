#pragma once

#include "linux/x11/connection.h"
#include "linux/x11/pixel_rect.h"

#include <cstdint>
#include <optional>
#include <vector>

namespace velmo::x11 {

struct OpenMenu {
    xcb_window_t window = XCB_WINDOW_NONE;
    /// Pixels of the root window.
    PixelRect area;
    std::optional<std::int32_t> processIdentifier;
};

/// The menus on the screen, topmost first: windows that say they are menus, and, because some toolkits
/// say nothing of it, windows that no window manager manages and that want what they cover to be kept.
std::vector<OpenMenu> openMenus(const Connection& connection);

}  // namespace velmo::x11
