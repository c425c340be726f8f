#pragma once

#include "linux/x11/pixel_rect.h"

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace velmo::x11 {

/// What a dock reserves: depths in pixels from the left, right, upper and lower edge of the root window, then
/// begin and end along each of them, both inclusive.
using Strut = std::array<std::uint32_t, 12>;

/// Window managers read struts in different ways, which matters where the bar's monitor does not lie at the
/// top of the root window.
struct StrutReader {
    enum class Upper {
        /// From the root window's edge, on all monitors on the way: as it is written down.
        fromRoot,
        /// The same, on each monitor that has one of the columns.
        fromRootByColumn,
        /// The same, but a monitor that would be covered as a whole keeps all.
        fromRootSparing,
        /// From the root window's edge, and from its sides nothing but the rows that are named.
        fromRootInRows,
        /// From the edge of the monitor that the dock lies on.
        fromMonitor,
    };

    /// How the name begins by which it makes itself known.
    std::string_view name;
    Upper upper = Upper::fromRoot;
    /// What a dock reserves later is taken for another monitor's.
    bool readsOnce = false;

    /// Who is not known reads what is written down.
    static const StrutReader& named(const std::string& name);

    /// For a bar at the top of one of the monitors, in pixels of the root window. Nothing where that cannot
    /// be said without taking room from another monitor.
    Strut strutFor(const PixelRect& bar, const std::vector<PixelRect>& monitors, int rootWidth) const;
};

}  // namespace velmo::x11
