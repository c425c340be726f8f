#pragma once

#include "ns_screen.h"

namespace velmo::macos {

class NSWindow : public ClassOf<NSWindow, "NSWindow", NSObject> {
public:
    CGRect convertRectToScreen(const CGRect& rect) const {
        return send<CGRect, "convertRectToScreen:">(rect);
    }
    NSInteger windowNumber() const { return send<NSInteger, "windowNumber">(); }
    /// None while the window lies on no screen.
    NSScreen screen() const { return send<NSScreen, "screen">(); }
};

}  // namespace velmo::macos
