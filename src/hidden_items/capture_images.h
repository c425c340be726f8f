#pragma once

#include "async/task.h"
#include "hidden_items/menu_bar_item_info.h"
#include "platform/image.h"
#include "platform/screen_capture.h"

#include <cstdint>
#include <map>
#include <vector>

namespace velmo {

/// Pictures of the items' windows, by window number, all taken side by side. Windows that cannot be pictured
/// are left out. `scale` is in pixels a point. Ends the program where an item is not of a finite size.
Task<std::map<std::uint32_t, Image>> captureImages(std::vector<MenuBarItemInfo> items, double scale,
                                                   ScreenCapture& screenCapture);

}  // namespace velmo
