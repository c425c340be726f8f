#include "hidden_items/other_app_menu.h"
#include "menubar/menu_bar_manager.h"

namespace velmo {

namespace {

/// Time for the click to open a menu, which then keeps the items shown.
constexpr Seconds clickOutsideDelay = 0.25;

}  // namespace

void MenuBarManager::clickedOutside() {
    if (revealLevel_ == RevealLevel::none || !preferences_->hideOnClickOutside.value() ||
        isPointerInMenuBar() || panel_.isVisible() || isOtherAppMenuOpen(platform_))
        return;
    platform_.runLoop.schedule(clickOutsideDelay, lifetime_.guard([this] { hideAfterClickOutside(); }));
}

void MenuBarManager::hideAfterClickOutside() {
    if (revealLevel_ != RevealLevel::none && openMenus_ == 0 && !isOtherAppMenuOpen(platform_))
        changeRevealLevel(RevealLevel::none);
}

}  // namespace velmo
