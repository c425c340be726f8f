#pragma once

#include <algorithm>
#include <cstdint>

namespace velmo::x11 {

/// An area of a window, in pixels, origin at the top left.
struct PixelRect {
    int x = 0;
    int y = 0;
    int width = 0;
    int height = 0;

    bool operator==(const PixelRect&) const = default;

    /// How many pixels both have.
    std::int64_t overlapWith(const PixelRect& other) const {
        const int across = std::min(x + width, other.x + other.width) - std::max(x, other.x);
        const int down = std::min(y + height, other.y + other.height) - std::max(y, other.y);
        return std::int64_t{std::max(across, 0)} * std::max(down, 0);
    }
    bool overlaps(const PixelRect& other) const { return overlapWith(other) > 0; }
};

}  // namespace velmo::x11
