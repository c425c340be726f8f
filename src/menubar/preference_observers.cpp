#include "menubar/menu_bar_manager.h"

namespace velmo {

// A reaction runs in a later turn of the loop, when the new value has been stored: it may read it there.
void MenuBarManager::observePreferences() {
    const auto observe = [this](const auto& setting, auto reaction) {
        cancellables_.push_back(setting.publisher()
                                    .removeDuplicates()
                                    .dropFirst()
                                    .receiveOn(platform_.runLoop)
                                    .sink(lifetime_.guard(std::move(reaction))));
    };
    observe(preferences_->showOnHover, [this](bool enabled) { updateHoverTracking(enabled); });
    observe(preferences_->autoRehide, [this](bool) { restartRehideTimer(); });
    observe(preferences_->rehideDelay, [this](double) { restartRehideTimer(); });
    observe(preferences_->toggleIconStyle, [this](ToggleIconStyle) { applyRevealLevel(); });
    observe(preferences_->alwaysHiddenEnabled, [this](bool enabled) { alwaysHiddenEnabledChanged(enabled); });
    for (auto* binding : {&preferences_->hotkey, &preferences_->panelHotkey})
        observe(*binding, [this](const std::optional<HotkeyBinding>&) { registerHotkeys(); });
}

void MenuBarManager::alwaysHiddenEnabledChanged(bool enabled) {
    alwaysHiddenDivider_.statusItem().setVisible(enabled);
    if (!enabled && revealLevel_ == RevealLevel::all)
        changeRevealLevel(RevealLevel::hidden);
    applyRevealLevel();
}

}  // namespace velmo
