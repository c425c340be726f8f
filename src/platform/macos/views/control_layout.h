#pragma once

#include "macos/appkit/ns_view.h"

#include <cmath>

namespace velmo::macos {

/// With edges at whole points: between two pixels everything would be blurred, and a window may come to a
/// screen that has no others. What touches still touches, and a whole size stays.
inline Rect wholePoints(const Rect& area) {
    const double x = std::round(area.x);
    const double y = std::round(area.y);
    return {x, y, std::round(area.maxX()) - x, std::round(area.maxY()) - y};
}

/// A frame that stays costs no drawing.
inline void setFrame(const NSView& view, const Rect& frame) {
    if (rectOf(view.frame()) != frame)
        view.setFrame(cgRect(frame));
}

/// In points on its surface.
inline void place(const NSView& view, const Rect& area) {
    setFrame(view, wholePoints(area));
}

/// What is to be seen of the view gets that area, in points on its surface.
inline void placeAligned(const NSView& view, const Rect& area) {
    setFrame(view, rectOf(view.frameForAlignmentRect(cgRect(wholePoints(area)))));
}

/// Whole points for what is to be seen of it.
inline Size naturalSize(const NSView& view) {
    const CGSize size = view.intrinsicContentSize();
    return {std::ceil(size.width), std::ceil(size.height)};
}

}  // namespace velmo::macos
