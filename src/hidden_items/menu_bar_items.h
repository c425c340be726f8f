#pragma once

#include "hidden_items/closed_interval.h"
#include "hidden_items/menu_bar_item_info.h"
#include "platform/platform.h"
#include "platform/screens.h"

#include <vector>

namespace velmo {

/// The items in the screen's menu bar, from left to right, without those whose middle lies in one of the
/// excluded ranges of x values. Empty where the window server does not answer.
std::vector<MenuBarItemInfo> currentMenuBarItems(const Screen& screen,
                                                 const std::vector<ClosedInterval>& excludedRanges,
                                                 const Platform& platform);

}  // namespace velmo
