#pragma once

#include "ns_view.h"

namespace velmo::macos {

enum class NSWindowCollectionBehavior : NSUInteger {};
enum class NSWindowAnimationBehavior : NSInteger {};

template <>
inline constexpr std::string_view frameworkName<NSWindowCollectionBehavior> = "NSWindowCollectionBehavior";
template <>
inline constexpr std::string_view frameworkName<NSWindowAnimationBehavior> = "NSWindowAnimationBehavior";

class NSPanel : public ClassOf<NSPanel, "NSPanel", NSWindow> {
public:
    static NSPanel with(const CGRect& content, NSWindowStyleMask mask) {
        return make<"initWithContentRect:styleMask:backing:defer:">(content, mask,
                                                                    NSBackingStoreType::buffered, false);
    }

    void setFloatingPanel(bool floating) const { send<void, "setFloatingPanel:">(floating); }
    void setLevel(NSInteger level) const { send<void, "setLevel:">(level); }
    void setCollectionBehavior(NSWindowCollectionBehavior behavior) const {
        send<void, "setCollectionBehavior:">(behavior);
    }
    void setHidesOnDeactivate(bool hides) const { send<void, "setHidesOnDeactivate:">(hides); }
    void setAllowsToolTipsWhenApplicationIsInactive(bool allows) const {
        send<void, "setAllowsToolTipsWhenApplicationIsInactive:">(allows);
    }
    void setAnimationBehavior(NSWindowAnimationBehavior behavior) const {
        send<void, "setAnimationBehavior:">(behavior);
    }
};

}  // namespace velmo::macos
