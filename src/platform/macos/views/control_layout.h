#pragma once

#include "macos/appkit/ns_view.h"

namespace velmo::macos {

/// What is to be seen of the view gets that area, in points on its surface.
inline void placeAligned(const NSView& view, const Rect& area) {
    view.setFrame(view.frameForAlignmentRect(cgRect(area)));
}

/// What is to be seen of it wants that much.
inline Size naturalSize(const NSView& view) {
    const CGSize size = view.intrinsicContentSize();
    return {size.width, size.height};
}

}  // namespace velmo::macos
