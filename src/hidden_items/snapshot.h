#pragma once

#include "hidden_items/menu_bar_item_info.h"
#include "platform/image.h"
#include "platform/run_loop.h"

#include <cstdint>
#include <map>
#include <vector>

namespace velmo {

/// What was last seen of the hidden items while they were shown.
struct Snapshot {
    /// From left to right, as in the menu bar.
    std::vector<MenuBarItemInfo> hidden;
    std::vector<MenuBarItemInfo> alwaysHidden;
    /// The latest picture of each window, by its number.
    std::map<std::uint32_t, Image> images;
    Date date = distantPast;
};

}  // namespace velmo
