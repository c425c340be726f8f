#pragma once

#include "macos/foundation/ns_array.h"
#include "macos/quartz_core/ca_layer.h"
#include "ns_tracking_area.h"
#include "ns_window.h"

namespace velmo::macos {

enum class NSWindowOrderingMode : NSInteger { below = -1, above = 1 };

template <>
inline constexpr std::string_view frameworkName<NSWindowOrderingMode> = "NSWindowOrderingMode";

class NSView : public ClassOf<NSView, "NSView", NSObject> {
public:
    static NSView create() { return make<"initWithFrame:">(CGRect{}); }

    CGRect bounds() const { return send<CGRect, "bounds">(); }
    /// In the view around it.
    CGRect frame() const { return send<CGRect, "frame">(); }
    void setFrame(const CGRect& frame) const { send<void, "setFrame:">(frame); }
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
    NSString toolTip() const { return send<NSString, "toolTip">(); }
    void setToolTip(const NSString& text) const { send<void, "setToolTip:">(text); }

    // For assistive programs.

    void setAccessibilityLabel(const NSString& text) const { send<void, "setAccessibilityLabel:">(text); }
    void setAccessibilityHelp(const NSString& text) const { send<void, "setAccessibilityHelp:">(text); }
    /// One of those in ns_accessibility.h.
    void setAccessibilityRole(const NSString& role) const { send<void, "setAccessibilityRole:">(role); }
    /// False: only what lies in it is told.
    void setAccessibilityElement(bool isElement) const { send<void, "setAccessibilityElement:">(isElement); }

    /// Above those that it has.
    void addSubview(const NSView& view) const { send<void, "addSubview:">(view); }
    /// Directly above or below one that it has.
    void addSubview(const NSView& view, NSWindowOrderingMode place, const NSView& neighbour) const {
        send<void, "addSubview:positioned:relativeTo:">(view, place, neighbour);
    }
    NSArray subviews() const { return send<NSArray, "subviews">(); }
    void removeFromSuperview() const { send<void, "removeFromSuperview">(); }
    void setHidden(bool hidden) const { send<void, "setHidden:">(hidden); }
    bool isHidden() const { return send<bool, "isHidden">(); }
    void setNeedsDisplay() const { send<void, "setNeedsDisplay:">(true); }
    void setAlphaValue(CGFloat alpha) const { send<void, "setAlphaValue:">(alpha); }

    // What is seen of a view may be smaller than its frame: shadows and focus rings lie outside of it.

    CGRect frameForAlignmentRect(const CGRect& rect) const {
        return send<CGRect, "frameForAlignmentRect:">(rect);
    }
    CGRect alignmentRectForFrame(const CGRect& frame) const {
        return send<CGRect, "alignmentRectForFrame:">(frame);
    }
    /// What is to be seen of it wants that much; negative where any extent will do.
    CGSize intrinsicContentSize() const { return send<CGSize, "intrinsicContentSize">(); }

    void setWantsLayer(bool wants) const { send<void, "setWantsLayer:">(wants); }
    CALayer layer() const { return send<CALayer, "layer">(); }
};

inline void NSWindow::setContentView(const NSView& view) const {
    send<void, "setContentView:">(view);
}

}  // namespace velmo::macos
