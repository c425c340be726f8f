#pragma once

#include <vector>

namespace velmo {

/// Pixels that an item takes in the bar.
struct ItemWidth {
    int preferred = 0;
    /// What it can do with where there are too many; no more than preferred.
    int least = 0;
    /// Others become narrower only where it is as narrow as can be.
    bool yieldsFirst = false;
};

/// What there is for items, in pixels.
struct BarRoom {
    int width = 0;
    /// Items as wide as this hide what lies left of them, which needs no room then.
    int longItem = 0;
    /// By how much items become narrower at a time, so that few changes of many change all of them.
    int step = 1;
};

/// Widths of items, from right to left, in a bar. Where they do not fit, those that yield first become
/// narrower, all by as much, whether they are hidden or not, and then the others; where even that is not
/// enough, those at the left have no room.
std::vector<int> fittingWidths(const std::vector<ItemWidth>& items, const BarRoom& room);

}  // namespace velmo
