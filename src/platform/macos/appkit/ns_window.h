#pragma once

#include "ns_color.h"
#include "ns_responder.h"
#include "ns_screen.h"

namespace velmo::macos {

class NSToolbar;
class NSView;
class NSViewController;
enum class NSWindowToolbarStyle : NSInteger;

enum class NSWindowStyleMask : NSUInteger {};
enum class NSBackingStoreType : NSUInteger { buffered = 2 };

template <>
inline constexpr std::string_view frameworkName<NSWindowStyleMask> = "NSWindowStyleMask";
template <>
inline constexpr std::string_view frameworkName<NSBackingStoreType> = "NSBackingStoreType";

class NSWindow : public ClassOf<NSWindow, "NSWindow", NSObject> {
public:
    /// As large as what the controller shows.
    static NSWindow with(const NSViewController& content);

    CGRect convertRectToScreen(const CGRect& rect) const {
        return send<CGRect, "convertRectToScreen:">(rect);
    }
    NSInteger windowNumber() const { return send<NSInteger, "windowNumber">(); }
    /// None while the window lies on no screen.
    NSScreen screen() const { return send<NSScreen, "screen">(); }
    /// False for a window that is miniaturized.
    bool isVisible() const { return send<bool, "isVisible">(); }
    bool isMiniaturized() const { return send<bool, "isMiniaturized">(); }
    /// Who has the keyboard while the window has it.
    NSResponder firstResponder() const { return send<NSResponder, "firstResponder">(); }

    void setContentView(const NSView& view) const;
    /// Points, origin at the bottom left of the primary screen.
    CGRect frame() const { return send<CGRect, "frame">(); }
    /// With title bar and toolbar.
    CGRect frameForContent(const CGRect& content) const {
        return send<CGRect, "frameRectForContentRect:">(content);
    }
    void setFrame(const CGRect& frame) const { send<void, "setFrame:display:">(frame, true); }
    void setStyleMask(NSWindowStyleMask mask) const { send<void, "setStyleMask:">(mask); }
    void setToolbar(const NSToolbar& toolbar) const;
    void setToolbarStyle(NSWindowToolbarStyle style) const;
    void setTitle(const NSString& title) const { send<void, "setTitle:">(title); }
    void setAccessibilityLabel(const NSString& text) const { send<void, "setAccessibilityLabel:">(text); }
    /// True: closing it gives up a reference that nobody here has.
    void setReleasedWhenClosed(bool released) const { send<void, "setReleasedWhenClosed:">(released); }
    /// Not retained.
    void setDelegate(const Object& delegate) const { send<void, "setDelegate:">(delegate); }
    /// Tab goes through the controls as they lie.
    void setAutorecalculatesKeyViewLoop(bool recalculates) const {
        send<void, "setAutorecalculatesKeyViewLoop:">(recalculates);
    }
    void center() const { send<void, "center">(); }
    /// The window takes the remembered frame, if there is one, and remembers its frame from now on.
    void setFrameAutosaveName(const NSString& name) const { send<bool, "setFrameAutosaveName:">(name); }

    void makeKeyAndOrderFront() const { send<void, "makeKeyAndOrderFront:">(Object()); }
    void orderFrontRegardless() const { send<void, "orderFrontRegardless">(); }
    void orderOut() const { send<void, "orderOut:">(Object()); }
    void close() const { send<void, "close">(); }

    void setBackgroundColor(const NSColor& color) const { send<void, "setBackgroundColor:">(color); }
    void setOpaque(bool opaque) const { send<void, "setOpaque:">(opaque); }
    void setHasShadow(bool hasShadow) const { send<void, "setHasShadow:">(hasShadow); }
};

}  // namespace velmo::macos
