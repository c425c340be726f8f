#pragma once

#include "macos/foundation/ns_string.h"

namespace velmo::macos {

class NSMenuItem : public ClassOf<NSMenuItem, "NSMenuItem", NSObject> {
public:
    static NSMenuItem with(const NSString& title, Selector action, const NSString& keyEquivalent) {
        return make<"initWithTitle:action:keyEquivalent:">(title, action, keyEquivalent);
    }
    static NSMenuItem separator() { return sendToClass<NSMenuItem, "separatorItem">(); }

    Selector action() const { return send<Selector, "action">(); }
    /// Not retained.
    void setTarget(const Object& target) const { send<void, "setTarget:">(target); }
};

}  // namespace velmo::macos
