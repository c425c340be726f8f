#include "menubar/menu_bar_manager.h"

#include <cmath>

namespace velmo {

namespace {

/// Points that the two axes together must exceed.
constexpr double scrollThreshold = 4.0;
constexpr Seconds scrollDebounce = 0.6;

}  // namespace

void MenuBarManager::scrolled(double delta) {
    if (!preferences_->showOnScroll.value() || !(std::abs(delta) > scrollThreshold) || !isPointerInMenuBar())
        return;
    const Date now = platform_.runLoop.now();
    if (!(now - lastScrollToggle_ > scrollDebounce))
        return;
    lastScrollToggle_ = now;
    toggleHidden();
}

}  // namespace velmo
