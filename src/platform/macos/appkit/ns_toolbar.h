#pragma once

#include "macos/foundation/ns_array.h"
#include "ns_image.h"
#include "ns_window.h"

namespace velmo::macos {

enum class NSToolbarDisplayMode : NSUInteger { iconAndLabel = 1 };
enum class NSWindowToolbarStyle : NSInteger { preference = 2 };

template <>
inline constexpr std::string_view frameworkName<NSToolbarDisplayMode> = "NSToolbarDisplayMode";
template <>
inline constexpr std::string_view frameworkName<NSWindowToolbarStyle> = "NSWindowToolbarStyle";

class NSToolbarItem : public ClassOf<NSToolbarItem, "NSToolbarItem", NSObject> {
public:
    static NSToolbarItem with(const NSString& identifier) {
        return make<"initWithItemIdentifier:">(identifier);
    }

    NSString itemIdentifier() const { return send<NSString, "itemIdentifier">(); }
    void setLabel(const NSString& label) const { send<void, "setLabel:">(label); }
    void setImage(const NSImage& image) const { send<void, "setImage:">(image); }
    /// Not retained.
    void setTarget(const Object& target) const { send<void, "setTarget:">(target); }
    void setAction(Selector action) const { send<void, "setAction:">(action); }
};

class NSToolbar : public ClassOf<NSToolbar, "NSToolbar", NSObject> {
public:
    static NSToolbar with(const NSString& identifier) { return make<"initWithIdentifier:">(identifier); }

    /// Not retained.
    void setDelegate(const Object& delegate) const { send<void, "setDelegate:">(delegate); }
    void setDisplayMode(NSToolbarDisplayMode mode) const { send<void, "setDisplayMode:">(mode); }
    void setAllowsUserCustomization(bool allows) const { send<void, "setAllowsUserCustomization:">(allows); }
    /// Since macOS 15; before, it does nothing.
    void setAllowsDisplayModeCustomization(bool allows) const {
        if (respondsTo(selectorNamed<"setAllowsDisplayModeCustomization:">()))
            send<void, "setAllowsDisplayModeCustomization:">(allows);
    }
    void setSelectedItemIdentifier(const NSString& identifier) const {
        send<void, "setSelectedItemIdentifier:">(identifier);
    }
};

inline void NSWindow::setToolbar(const NSToolbar& toolbar) const {
    send<void, "setToolbar:">(toolbar);
}

inline void NSWindow::setToolbarStyle(NSWindowToolbarStyle style) const {
    send<void, "setToolbarStyle:">(style);
}

}  // namespace velmo::macos
