#include "menubar/menu_bar_manager.h"

namespace velmo {

void MenuBarManager::toggleHidden() {
    changeRevealLevel(revealLevel_ == RevealLevel::none ? RevealLevel::hidden : RevealLevel::none);
}

void MenuBarManager::toggleAlwaysHidden() {
    changeRevealLevel(revealLevel_ == RevealLevel::all ? RevealLevel::none : RevealLevel::all);
}

void MenuBarManager::openSettings() {
    requestSettings(std::nullopt);
}

void MenuBarManager::requestSettings(std::optional<SettingsTab> tab) const {
    // A copy: the callback may replace itself, or end the manager.
    if (const auto callback = onOpenSettings)
        callback(tab);
}

}  // namespace velmo
