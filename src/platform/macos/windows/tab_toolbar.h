#pragma once

#include "macos/appkit/ns_toolbar.h"
#include "macos/objc/instance.h"
#include "view_content.h"

#include <functional>
#include <string>
#include <vector>

namespace velmo::macos {

/// Shows tabs in a window's toolbar, as settings windows of the system have them: symbols above their names.
class TabToolbar {
public:
    explicit TabToolbar(NSWindow window) : window_(std::move(window)) {}
    ~TabToolbar();
    TabToolbar(const TabToolbar&) = delete;
    TabToolbar& operator=(const TabToolbar&) = delete;

    void display(const TabView& tabView);

private:
    void makeToolbar();

    NSToolbarItem itemFor(const NSToolbar& toolbar, const NSString& identifier, bool willBeInserted);
    NSArray identifiers(const NSToolbar& toolbar);
    void chosen(const NSToolbarItem& item);

    using Class =
        Subclass<TabToolbar, "VelmoTabToolbarDelegate", NSObject,
                 Method<"toolbar:itemForItemIdentifier:willBeInsertedIntoToolbar:", &TabToolbar::itemFor,
                        "NSToolbarDelegate">,
                 Method<"toolbarDefaultItemIdentifiers:", &TabToolbar::identifiers, "NSToolbarDelegate">,
                 Method<"toolbarAllowedItemIdentifiers:", &TabToolbar::identifiers, "NSToolbarDelegate">,
                 Method<"toolbarSelectableItemIdentifiers:", &TabToolbar::identifiers, "NSToolbarDelegate">,
                 Method<"tabChosen:", &TabToolbar::chosen>>;

    NSWindow window_;
    NSToolbar toolbar_;
    std::vector<TabItem> tabs_;
    std::function<void(const std::string&)> onSelect_;
    Instance<TabToolbar, Class, NSObject> delegate_{*this};
};

}  // namespace velmo::macos
