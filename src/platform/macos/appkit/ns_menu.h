#pragma once

#include "ns_menu_item.h"
#include "ns_view.h"

namespace velmo::macos {

class NSMenu : public ClassOf<NSMenu, "NSMenu", NSObject> {
public:
    static NSMenu create() { return make<"init">(); }

    void addItem(const NSMenuItem& item) const { send<void, "addItem:">(item); }
    void setTitle(const NSString& title) const { send<void, "setTitle:">(title); }
    void setSubmenu(const NSMenu& menu, const NSMenuItem& item) const {
        send<void, "setSubmenu:forItem:">(menu, item);
    }
    /// With its upper left corner at a place in the view. Returns once it has closed.
    void popUp(const CGPoint& location, const NSView& view) const {
        send<bool, "popUpMenuPositioningItem:atLocation:inView:">(NSMenuItem(), location, view);
    }
};

}  // namespace velmo::macos
