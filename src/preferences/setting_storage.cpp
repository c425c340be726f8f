#include "preferences/setting_storage.h"

namespace velmo {

void storeSetting(UserDefaults& defaults, const std::string& key, bool value) {
    defaults.setBool(value, key);
}

void storeSetting(UserDefaults& defaults, const std::string& key, double value) {
    defaults.setDouble(value, key);
}

void storeSetting(UserDefaults& defaults, const std::string& key, const std::string& value) {
    defaults.setObject(value, key);
}

void storeSetting(UserDefaults& defaults, const std::string& key, ClickAction value) {
    defaults.setObject(std::string(rawValue(value)), key);
}

void storeSetting(UserDefaults& defaults, const std::string& key, ToggleIconStyle value) {
    defaults.setObject(std::string(rawValue(value)), key);
}

void storeSetting(UserDefaults& defaults, const std::string& key, const std::optional<HotkeyBinding>& value) {
    if (const auto json = value ? encodeHotkeyBinding(*value) : std::nullopt)
        defaults.setObject(*json, key);
    else
        defaults.removeObject(key);
}

}  // namespace velmo
