#pragma once

#include "hidden_items/menu_bar_item_info.h"
#include "platform/image.h"

#include <optional>

namespace velmo {

/// An entry of the hidden items panel, identified by the number of its item's window.
struct PanelItem {
    MenuBarItemInfo info;
    std::optional<Image> image;

    bool operator==(const PanelItem&) const = default;
};

}  // namespace velmo
