#pragma once

#include "geometry.h"

#include <algorithm>

namespace velmo {

/// The frame of a window that hangs from `top`, in the middle below `midX` as far as the screen leaves room
/// on either side, less a gap. Where its two edges ask for different things, the left one wins. Points, y
/// upwards.
inline Rect hangingFrame(double midX, double top, const Size& size, const Rect& screen) {
    constexpr double edgeGap = 8;
    double x = midX - size.width / 2;
    x = std::min(x, screen.maxX() - size.width - edgeGap);
    x = std::max(x, screen.minX() + edgeGap);
    return {x, top - size.height, size.width, size.height};
}

}  // namespace velmo
