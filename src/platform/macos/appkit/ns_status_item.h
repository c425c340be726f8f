#pragma once

#include "ns_button.h"

namespace velmo::macos {

class NSStatusBarButton : public ClassOf<NSStatusBarButton, "NSStatusBarButton", NSButton> {};

class NSStatusItem : public ClassOf<NSStatusItem, "NSStatusItem", NSObject> {
public:
    CGFloat length() const { return send<CGFloat, "length">(); }
    void setLength(CGFloat length) const { send<void, "setLength:">(length); }
    void setAutosaveName(const NSString& name) const { send<void, "setAutosaveName:">(name); }
    bool isVisible() const { return send<bool, "isVisible">(); }
    void setVisible(bool visible) const { send<void, "setVisible:">(visible); }
    NSStatusBarButton button() const { return send<NSStatusBarButton, "button">(); }
};

}  // namespace velmo::macos
