#pragma once

#include "macos/appkit/ns_view.h"

namespace velmo::macos {

/// In points on its surface. A frame that stays costs no drawing.
inline void place(const NSView& view, const Rect& frame) {
    if (rectOf(view.frame()) != frame)
        view.setFrame(cgRect(frame));
}

/// What is to be seen of the view gets that area, in points on its surface.
inline void placeAligned(const NSView& view, const Rect& area) {
    place(view, rectOf(view.frameForAlignmentRect(cgRect(area))));
}

/// What is to be seen of it wants that much.
inline Size naturalSize(const NSView& view) {
    const CGSize size = view.intrinsicContentSize();
    return {size.width, size.height};
}

}  // namespace velmo::macos
