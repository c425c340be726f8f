#include "menubar/menu_bar_manager.h"

namespace velmo {

namespace {

constexpr Seconds hoverDelay = 0.25;

}  // namespace

void MenuBarManager::updateHoverTracking(bool enabled) {
    StatusBarButton* button = toggle_.statusItem().button();
    if (button == nullptr)
        return;
    hoverTrackingArea_.reset();
    if (enabled)
        hoverTrackingArea_ = button->addTrackingArea(
            Rect{}, tracking::mouseEnteredAndExited | tracking::activeAlways | tracking::inVisibleRect,
            &hoverTarget_);
}

void MenuBarManager::hoverEntered() {
    hoverWorkItem_ = platform_.runLoop.schedule(hoverDelay, lifetime_.guard([this] { revealByHover(); }));
}

void MenuBarManager::hoverExited() {
    hoverWorkItem_.end();
}

void MenuBarManager::revealByHover() {
    if (preferences_->clickAction.value() == ClickAction::showPanel) {
        if (!panel_.isVisible())
            togglePanel();
    } else if (revealLevel_ == RevealLevel::hidden) {
        restartRehideTimer();
    } else {
        changeRevealLevel(RevealLevel::hidden);
    }
}

}  // namespace velmo
