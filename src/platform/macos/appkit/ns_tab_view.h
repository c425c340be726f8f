#pragma once

#include "ns_view.h"

namespace velmo::macos {

class NSTabViewItem : public ClassOf<NSTabViewItem, "NSTabViewItem", NSObject> {
public:
    static NSTabViewItem with(const NSString& identifier) { return make<"initWithIdentifier:">(identifier); }

    void setLabel(const NSString& label) const { send<void, "setLabel:">(label); }
    void setView(const NSView& view) const { send<void, "setView:">(view); }
};

class NSTabView : public ClassOf<NSTabView, "NSTabView", NSView> {
public:
    static NSTabView create() { return make<"initWithFrame:">(CGRect{}); }

    void addTabViewItem(const NSTabViewItem& item) const { send<void, "addTabViewItem:">(item); }
    void removeTabViewItem(const NSTabViewItem& item) const { send<void, "removeTabViewItem:">(item); }
    NSTabViewItem selectedTabViewItem() const { return send<NSTabViewItem, "selectedTabViewItem">(); }
    void selectTabViewItemAtIndex(NSInteger index) const { send<void, "selectTabViewItemAtIndex:">(index); }
    /// What the chosen item's view gets of it.
    CGRect contentRect() const { return send<CGRect, "contentRect">(); }
    /// Not retained.
    void setDelegate(const Object& delegate) const { send<void, "setDelegate:">(delegate); }
};

}  // namespace velmo::macos
