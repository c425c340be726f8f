#pragma once

#include "ns_event.h"
#include "ns_font.h"
#include "ns_image.h"
#include "ns_view.h"

namespace velmo::macos {

class NSControl : public ClassOf<NSControl, "NSControl", NSView> {
public:
    void setEnabled(bool enabled) const { send<void, "setEnabled:">(enabled); }
    void setFont(const NSFont& font) const { send<void, "setFont:">(font); }
    /// Not retained.
    void setTarget(const Object& target) const { send<void, "setTarget:">(target); }
    void setAction(Selector action) const { send<void, "setAction:">(action); }
    void sendActionOn(NSEventMask mask) const { send<NSInteger, "sendActionOn:">(mask); }
};

class NSButton : public ClassOf<NSButton, "NSButton", NSControl> {
public:
    void setTitle(const NSString& title) const { send<void, "setTitle:">(title); }
    void setImage(const NSImage& image) const { send<void, "setImage:">(image); }
};

}  // namespace velmo::macos
