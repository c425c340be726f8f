#pragma once

#include "ns_view_controller.h"

namespace velmo::macos {

enum class NSPopoverBehavior : NSInteger {};
enum class NSRectEdge : NSUInteger {};

template <>
inline constexpr std::string_view frameworkName<NSPopoverBehavior> = "NSPopoverBehavior";
template <>
inline constexpr std::string_view frameworkName<NSRectEdge> = "NSRectEdge";

class NSPopover : public ClassOf<NSPopover, "NSPopover", NSObject> {
public:
    static NSPopover create() { return make<"init">(); }

    void setBehavior(NSPopoverBehavior behavior) const { send<void, "setBehavior:">(behavior); }
    void setAnimates(bool animates) const { send<void, "setAnimates:">(animates); }
    void setContentViewController(const NSViewController& controller) const {
        send<void, "setContentViewController:">(controller);
    }
    void setContentSize(const CGSize& size) const { send<void, "setContentSize:">(size); }
    bool isShown() const { return send<bool, "isShown">(); }
    void show(const CGRect& rect, const NSView& view, NSRectEdge edge) const {
        send<void, "showRelativeToRect:ofView:preferredEdge:">(rect, view, edge);
    }
    void performClose() const { send<void, "performClose:">(Object()); }
    /// At once, without asking.
    void close() const { send<void, "close">(); }
    /// Not retained.
    void setDelegate(const Object& delegate) const { send<void, "setDelegate:">(delegate); }
};

}  // namespace velmo::macos
