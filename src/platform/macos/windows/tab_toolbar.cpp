#include "tab_toolbar.h"

#include "macos/desktop/image_from.h"

#include <algorithm>

namespace velmo::macos {

TabToolbar::~TabToolbar() {
    toolbar_.setDelegate(Object());
}

void TabToolbar::display(const TabView& tabView) {
    onSelect_ = tabView.onSelect;
    if (tabs_ != tabView.tabs) {
        tabs_ = tabView.tabs;
        makeToolbar();
    }
    toolbar_.setSelectedItemIdentifier(NSString::from(tabView.selection));
}

void TabToolbar::makeToolbar() {
    toolbar_.setDelegate(Object());
    toolbar_ = NSToolbar::with(NSString::from("Velmo.Tabs"));
    toolbar_.setDelegate(delegate_.object());
    toolbar_.setDisplayMode(NSToolbarDisplayMode::iconAndLabel);
    toolbar_.setAllowsUserCustomization(false);
    toolbar_.setAllowsDisplayModeCustomization(false);
    window_.setToolbarStyle(NSWindowToolbarStyle::preference);
    window_.setToolbar(toolbar_);
}

// NOLINTNEXTLINE(readability-make-member-function-const): methods of a class made here are not.
NSToolbarItem TabToolbar::itemFor(const NSToolbar& /*toolbar*/, const NSString& identifier,
                                  bool /*willBeInserted*/) {
    const std::string tag = identifier.text();
    const auto tab =
        std::find_if(tabs_.begin(), tabs_.end(), [&](const auto& one) { return one.tag == tag; });
    if (tab == tabs_.end())
        return {};
    NSToolbarItem item = NSToolbarItem::with(identifier);
    item.setLabel(NSString::from(tab->title));
    item.setImage(imageFrom(tab->image));
    item.setTarget(delegate_.object());
    item.setAction(selectorNamed<"tabChosen:">());
    return item;
}

// NOLINTNEXTLINE(readability-make-member-function-const): methods of a class made here are not.
NSArray TabToolbar::identifiers(const NSToolbar& /*toolbar*/) {
    NSMutableArray made = NSMutableArray::create();
    for (const TabItem& tab : tabs_)
        made.addObject(NSString::from(tab.tag));
    return made;
}

// NOLINTNEXTLINE(readability-make-member-function-const): methods of a class made here are not.
void TabToolbar::chosen(const NSToolbarItem& item) {
    // A copy: it may end this.
    if (const auto onSelect = onSelect_)
        onSelect(item.itemIdentifier().text());
}

}  // namespace velmo::macos
