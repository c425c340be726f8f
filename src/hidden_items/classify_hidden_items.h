#pragma once

#include "hidden_items/menu_bar_item_info.h"

#include <vector>

namespace velmo {

/// The items of the two hidden sections, in the order in which they were given.
struct HiddenItems {
    std::vector<MenuBarItemInfo> hidden;
    std::vector<MenuBarItemInfo> alwaysHidden;

    bool operator==(const HiddenItems&) const = default;
};

/// An item belongs to the section that its middle lies in. Only x values of the frames are looked at.
/// Without `alwaysHiddenDivider` everything left of the divider is merely hidden.
HiddenItems classifyHiddenItems(const std::vector<MenuBarItemInfo>& items, const Rect& divider,
                                const std::optional<Rect>& alwaysHiddenDivider);

}  // namespace velmo
