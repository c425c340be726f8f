#pragma once

#include "shown_menu.h"

#include <utility>

namespace velmo::macos {

/// Performs an item when the user has chosen it.
class ShownMenu::Target {
public:
    explicit Target(std::shared_ptr<MenuItem> item) : item_(std::move(item)) {}

    NSMenuItem menuItem() const {
        NSMenuItem made = NSMenuItem::with(NSString::from(item_->title()), selectorNamed<"runItem:">(),
                                           NSString::from(item_->keyEquivalent()));
        made.setTarget(instance_.object());
        return made;
    }

private:
    void run(const NSMenuItem& /*sender*/) {
        const std::shared_ptr<MenuItem> item = item_;
        item->performAction();
    }

    using Class = Subclass<Target, "VelmoMenuTarget", NSObject, Method<"runItem:", &Target::run>>;

    std::shared_ptr<MenuItem> item_;
    Instance<Target, Class, NSObject> instance_{*this};
};

}  // namespace velmo::macos
