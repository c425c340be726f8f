#pragma once

namespace velmo::x11 {

/// An area of a window, in pixels, origin at the top left.
struct PixelRect {
    int x = 0;
    int y = 0;
    int width = 0;
    int height = 0;

    bool operator==(const PixelRect&) const = default;
};

}  // namespace velmo::x11
