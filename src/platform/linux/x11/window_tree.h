#pragma once

#include "linux/x11/connection.h"
#include "linux/x11/pixel_rect.h"

#include <optional>
#include <vector>

namespace velmo::x11 {

/// The lowest first. Empty where the window is gone.
std::vector<xcb_window_t> childrenOf(const Connection& connection, xcb_window_t window);
std::vector<xcb_window_t> childrenFrom(const Connection& connection, xcb_query_tree_cookie_t cookie);
/// The child of the root window that is the window or holds it. The window itself where it is gone.
xcb_window_t topLevelOf(const Connection& connection, xcb_window_t window);
/// Of a child of the root window, with its border. Nothing where it is gone.
std::optional<PixelRect> areaFrom(const Connection& connection, xcb_get_geometry_cookie_t cookie);
/// Of the root window as it is now; as it was at first where the server does not answer.
PixelRect rootArea(const Connection& connection);
/// Windows of other connections that a window manager says it manages. Their programs may have ended since.
/// The oldest first, but before all others `first` if it is one of them. Of hundreds only the oldest, among
/// which docks are, and the newest.
std::vector<xcb_window_t> managedWindowsOfOthers(const Connection& connection,
                                                 xcb_window_t first = XCB_WINDOW_NONE);

}  // namespace velmo::x11
