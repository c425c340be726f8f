#pragma once

#include "preferences/setting.h"

#include <memory>

namespace velmo {

/// The user's settings, over a store that outlives them. Nothing is read back from the store later on.
class Preferences {
public:
    explicit Preferences(UserDefaults& userDefaults);
    Preferences(const Preferences&) = delete;
    Preferences& operator=(const Preferences&) = delete;

    /// The one instance over the store: made for whoever asks first, and the same for all others as long as
    /// anyone keeps it. May be called on any thread.
    static std::shared_ptr<Preferences> shared(UserDefaults& standardUserDefaults);

    UserDefaults& defaults;

    Setting<bool> autoRehide{defaults, "autoRehide"};
    /// Seconds, as the user entered them.
    Setting<double> rehideDelay{defaults, "rehideDelay"};
    Setting<bool> hideOnClickOutside{defaults, "hideOnClickOutside"};
    Setting<bool> showOnHover{defaults, "showOnHover"};
    Setting<bool> showOnScroll{defaults, "showOnScroll"};
    Setting<bool> alwaysHiddenEnabled{defaults, "alwaysHiddenEnabled"};
    Setting<bool> refreshPanelOnOpen{defaults, "refreshPanelOnOpen"};
    Setting<bool> clockEnabled{defaults, "clockEnabled"};
    /// A date pattern.
    Setting<std::string> clockFormat{defaults, "clockFormat"};
    Setting<ClickAction> clickAction{defaults, "clickAction"};
    Setting<ToggleIconStyle> toggleIconStyle{defaults, "toggleIconStyle"};
    Setting<std::optional<HotkeyBinding>> hotkey{defaults, "hotkey"};
    Setting<std::optional<HotkeyBinding>> panelHotkey{defaults, "panelHotkey"};

private:
    void registerDefaults();
};

}  // namespace velmo
