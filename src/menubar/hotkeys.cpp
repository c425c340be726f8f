#include "menubar/menu_bar_manager.h"

namespace velmo {

// Both at a time, whichever has changed: the one may want what the other has given up.
void MenuBarManager::registerHotkeys() {
    hotkeys_.unregisterHotkey(toggleHotkeyID_);
    hotkeys_.unregisterHotkey(panelHotkeyID_);
    const auto registered = [this](const std::optional<HotkeyBinding>& binding,
                                   std::function<void()> action) {
        return binding ? hotkeys_.registerHotkey(binding->keyCode, binding->modifiers, std::move(action))
                       : std::nullopt;
    };
    toggleHotkeyID_ = registered(preferences_->hotkey.value(), lifetime_.guard([this] { toggleHidden(); }));
    panelHotkeyID_ =
        registered(preferences_->panelHotkey.value(), lifetime_.guard([this] { togglePanel(); }));
}

}  // namespace velmo
