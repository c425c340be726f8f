#pragma once

#include "linux/x11/connection.h"

namespace velmo::x11 {

/// True where a child of the root window was made by this process through another connection than the bar's,
/// as the toolkit's are, or is a window manager's frame around such a window.
bool isToolkitWindow(const Connection& connection, xcb_window_t child);

}  // namespace velmo::x11
