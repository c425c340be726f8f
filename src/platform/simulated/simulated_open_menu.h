#pragma once

#include "geometry.h"
#include "menu.h"

#include <string_view>

namespace velmo {

/// A menu of the program while the user has it open.
class SimulatedOpenMenu {
public:
    SimulatedOpenMenu(std::string itemName, Menu menu, const Point& location)
        : itemName_(std::move(itemName)), menu_(std::move(menu)), location_(location) {}

    /// Autosave name of the status item at which the menu was opened.
    const std::string& itemName() const { return itemName_; }
    const Menu& menu() const { return menu_; }
    /// The upper left corner: points, origin at the top left of the item's button, y downwards.
    const Point& location() const { return location_; }
    /// From top to bottom; "-" stands for a separator.
    std::vector<std::string> titles() const;

    /// The user chooses the first item of that title. False where there is none.
    bool choose(std::string_view title);
    /// Null where the user has chosen nothing.
    const std::shared_ptr<MenuItem>& chosen() const { return chosen_; }

private:
    std::string itemName_;
    Menu menu_;
    Point location_;
    std::shared_ptr<MenuItem> chosen_;
};

}  // namespace velmo
