#pragma once

#include "macos/core_graphics/cg_rect.h"
#include "macos/foundation/ns_array.h"

namespace velmo::macos {

class NSScreen : public ClassOf<NSScreen, "NSScreen", NSObject> {
public:
    static NSArray screens() { return sendToClass<NSArray, "screens">(); }
    static NSScreen main() { return sendToClass<NSScreen, "mainScreen">(); }

    CGRect frame() const { return send<CGRect, "frame">(); }
    CGRect visibleFrame() const { return send<CGRect, "visibleFrame">(); }
    CGFloat backingScaleFactor() const { return send<CGFloat, "backingScaleFactor">(); }
};

}  // namespace velmo::macos
