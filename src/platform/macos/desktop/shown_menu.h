#pragma once

#include "macos/appkit/ns_menu.h"
#include "macos/objc/instance.h"
#include "menu.h"

#include <memory>
#include <vector>

namespace velmo::macos {

/// A menu of the system, and the targets of its items.
class ShownMenu {
public:
    explicit ShownMenu(const Menu& menu);
    ~ShownMenu();
    ShownMenu(const ShownMenu&) = delete;
    ShownMenu& operator=(const ShownMenu&) = delete;

    /// Points, in the view. Returns once the menu has closed.
    void popUp(const CGPoint& location, const NSView& view) const { menu_.popUp(location, view); }

private:
    class Target;

    NSMenu menu_ = NSMenu::create();
    std::vector<std::unique_ptr<Target>> targets_;
};

}  // namespace velmo::macos
