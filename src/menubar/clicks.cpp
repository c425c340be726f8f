#include "menubar/menu_bar_manager.h"

namespace velmo {

void MenuBarManager::handleToggleClick(const Event& event) {
    if (event.type == EventType::rightMouseUp) {
        showToggleMenu(toggle_);
    } else if ((event.modifierFlags & modifier::option) != 0) {
        toggleAlwaysHidden();
    } else if (preferences_->clickAction.value() == ClickAction::showPanel) {
        if (!panel_.wasClosedBy(event))
            togglePanel();
    } else {
        toggleHidden();
    }
}

void MenuBarManager::handleDividerClick(ControlItem& divider, const Event& event) {
    if (divider.isExpanded)
        return;
    if (event.type == EventType::rightMouseUp)
        showToggleMenu(divider);
    else if (revealLevel_ != RevealLevel::none)
        changeRevealLevel(RevealLevel::none);
}

}  // namespace velmo
