#pragma once

#include "geometry.h"

#include <algorithm>

namespace velmo {

/// Points between a window below the bar and the edges of the screen.
inline constexpr double hangingEdgeGap = 8;

/// The frame of a window that hangs from `top`, in the middle below `midX` as far as the screen leaves room
/// on either side, less that gap. Where its two edges ask for different things, the left one wins. Points, y
/// upwards.
inline Rect hangingFrame(double midX, double top, const Size& size, const Rect& screen) {
    double x = midX - size.width / 2;
    x = std::min(x, screen.maxX() - size.width - hangingEdgeGap);
    x = std::max(x, screen.minX() + hangingEdgeGap);
    return {x, top - size.height, size.width, size.height};
}

}  // namespace velmo
