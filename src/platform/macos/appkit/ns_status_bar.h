#pragma once

#include "ns_status_item.h"

namespace velmo::macos {

class NSStatusBar : public ClassOf<NSStatusBar, "NSStatusBar", NSObject> {
public:
    static NSStatusBar system() { return sendToClass<NSStatusBar, "systemStatusBar">(); }

    NSStatusItem statusItem(CGFloat length) const {
        return send<NSStatusItem, "statusItemWithLength:">(length);
    }
    void remove(const NSStatusItem& item) const { send<void, "removeStatusItem:">(item); }
    CGFloat thickness() const { return send<CGFloat, "thickness">(); }
};

}  // namespace velmo::macos
