#include "shown_menu_target.h"

namespace velmo::macos {

ShownMenu::ShownMenu(const Menu& menu) {
    for (const auto& item : menu.items) {
        if (item) {
            targets_.push_back(std::make_unique<Target>(item));
            menu_.addItem(targets_.back()->menuItem());
        } else {
            menu_.addItem(NSMenuItem::separator());
        }
    }
}

ShownMenu::~ShownMenu() = default;

}  // namespace velmo::macos
