#pragma once

#include "linux/x11/connection.h"
#include "linux/x11/pixel_rect.h"

namespace velmo::x11 {

/// Asks compositing managers to draw no shadow around a window of this size. To be said anew when it changes.
void declineShadow(const Connection& connection, xcb_window_t window, const PixelRect& size);

}  // namespace velmo::x11
