#pragma once

#include "ns_tracking_area.h"
#include "ns_window.h"

namespace velmo::macos {

class NSView : public ClassOf<NSView, "NSView", NSObject> {
public:
    CGRect bounds() const { return send<CGRect, "bounds">(); }
    /// True: y grows downwards.
    bool isFlipped() const { return send<bool, "isFlipped">(); }
    /// None while the view stands in no window.
    NSWindow window() const { return send<NSWindow, "window">(); }
    /// No view stands for the window.
    CGRect convertRectTo(const CGRect& rect, const NSView& view) const {
        return send<CGRect, "convertRect:toView:">(rect, view);
    }
    void addTrackingArea(const NSTrackingArea& area) const { send<void, "addTrackingArea:">(area); }
    void removeTrackingArea(const NSTrackingArea& area) const { send<void, "removeTrackingArea:">(area); }
    void setToolTip(const NSString& text) const { send<void, "setToolTip:">(text); }
};

}  // namespace velmo::macos
