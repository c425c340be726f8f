#pragma once

#include "geometry.h"
#include "simulated/other_status_item.h"

namespace velmo {

class SimulatedStatusItem;

/// What the simulated bar knows of one item, the program's own or another application's.
struct StatusItemSlot {
    std::string identity;
    /// Null for another application's item.
    SimulatedStatusItem* own = nullptr;
    OtherStatusItem other;
    std::int64_t windowNumber = 0;
    /// Points, origin at the bottom left of the primary screen. An item that became invisible keeps its last
    /// one. Absent where there was never a screen to stand on.
    std::optional<Rect> frame;
};

}  // namespace velmo
