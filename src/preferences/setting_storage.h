#pragma once

#include "platform/user_defaults.h"
#include "preferences/click_action.h"
#include "preferences/hotkey_binding.h"
#include "preferences/toggle_icon_style.h"

namespace velmo {

/// How a setting of each type is stored.
void storeSetting(UserDefaults& defaults, const std::string& key, bool value);
void storeSetting(UserDefaults& defaults, const std::string& key, double value);
void storeSetting(UserDefaults& defaults, const std::string& key, const std::string& value);
void storeSetting(UserDefaults& defaults, const std::string& key, ClickAction value);
void storeSetting(UserDefaults& defaults, const std::string& key, ToggleIconStyle value);
/// Removes the key where there is no shortcut, or one that cannot be encoded.
void storeSetting(UserDefaults& defaults, const std::string& key, const std::optional<HotkeyBinding>& value);

}  // namespace velmo
