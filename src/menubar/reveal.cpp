#include "hidden_items/other_app_menu.h"
#include "menubar/menu_bar_manager.h"
#include "menubar/toggle_image.h"

#include <algorithm>

namespace velmo {

namespace {

constexpr Seconds rehideDelayFloor = 1.0;
constexpr Seconds rehideRetry = 1.0;
constexpr Seconds clockPlacementReveal = 45.0;
/// Time for the menu bar to lay the icons out.
constexpr Seconds snapshotDelay = 0.4;

}  // namespace

void MenuBarManager::changeRevealLevel(RevealLevel level) {
    revealLevel_ = level;
    applyRevealLevel();
}

void MenuBarManager::applyRevealLevel() {
    hiddenDivider_.isExpanded = revealLevel_ == RevealLevel::none;
    hiddenDivider_.update();
    alwaysHiddenDivider_.isExpanded = revealLevel_ != RevealLevel::all;
    alwaysHiddenDivider_.update();
    toggle_.image = toggleImage(revealLevel_ != RevealLevel::none, preferences_->toggleIconStyle.value());
    toggle_.update();
    restartRehideTimer();
    if (revealLevel_ != RevealLevel::none)
        scheduleSnapshot(snapshotDelay);
}

void MenuBarManager::restartRehideTimer() {
    invalidateRehideTimer();
    // The floor comes first: it also stands in for a delay that is not a number.
    if (revealLevel_ != RevealLevel::none && preferences_->autoRehide.value())
        scheduleRehideTimer(std::max(rehideDelayFloor, preferences_->rehideDelay.value()));
}

void MenuBarManager::invalidateRehideTimer() {
    if (rehideTimer_)
        rehideTimer_->invalidate();
    rehideTimer_.reset();
}

void MenuBarManager::scheduleRehideTimer(Seconds interval) {
    rehideTimer_ = platform_.runLoop.schedule(interval, lifetime_.guard([this] {
        platform_.runLoop.post(lifetime_.guard([this] { rehideTimerFired(); }));
    }));
}

void MenuBarManager::rehideTimerFired() {
    if (openMenus_ > 0 || isPointerInMenuBar() || panel_.isVisible() || isOtherAppMenuOpen(platform_))
        scheduleRehideTimer(rehideRetry);
    else if (revealLevel_ != RevealLevel::none)
        changeRevealLevel(RevealLevel::none);
}

void MenuBarManager::revealForClockPlacement() {
    changeRevealLevel(preferences_->alwaysHiddenEnabled.value() ? RevealLevel::all : RevealLevel::hidden);
    invalidateRehideTimer();
    scheduleRehideTimer(clockPlacementReveal);
}

}  // namespace velmo
