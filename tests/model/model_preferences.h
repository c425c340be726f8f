#pragma once

#include "model/shortcuts.h"
#include "preferences/click_action.h"
#include "preferences/toggle_icon_style.h"

namespace velmo {

/// The settings that matter to the reveal level.
struct ModelPreferences {
    bool autoRehide = true;
    double rehideDelay = 5;
    bool hideOnClickOutside = true;
    bool showOnHover = false;
    bool showOnScroll = false;
    bool alwaysHiddenEnabled = false;
    bool clockEnabled = false;
    bool refreshPanelOnOpen = true;
    ClickAction clickAction = ClickAction::revealInMenuBar;
    ToggleIconStyle toggleIconStyle = ToggleIconStyle::chevron;
    /// Places among the shortcuts, or their number for none.
    std::size_t hotkey = shortcuts.size();
    std::size_t panelHotkey = shortcuts.size();
};

}  // namespace velmo
