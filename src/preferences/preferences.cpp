#include "preferences/preferences.h"

#include <map>
#include <mutex>

namespace velmo {

namespace {

// The two spaces before the hours are meant.
constexpr const char* defaultClockFormat = "EEE d MMM  HH:mm";
constexpr double defaultRehideDelay = 5.0;

// Writing back what was read is meant: it removes what cannot be decoded and tidies what can.
void restoreHotkey(const UserDefaults& defaults, Setting<std::optional<HotkeyBinding>>& setting) {
    const auto json = defaults.dataForKey(setting.key());
    setting.set(json ? decodeHotkeyBinding(*json) : std::nullopt);
}

}  // namespace

Preferences::Preferences(UserDefaults& userDefaults) : defaults(userDefaults) {
    registerDefaults();
    for (Setting<bool>* setting : {&autoRehide, &hideOnClickOutside, &showOnHover, &showOnScroll,
                                   &alwaysHiddenEnabled, &refreshPanelOnOpen, &clockEnabled})
        setting->restore(defaults.boolForKey(setting->key()));
    rehideDelay.restore(defaults.doubleForKey(rehideDelay.key()));
    clockFormat.restore(defaults.stringForKey(clockFormat.key()).value_or(defaultClockFormat));
    clickAction.restore(clickActionFromRawValue(defaults.stringForKey(clickAction.key()).value_or("")));
    toggleIconStyle.restore(
        toggleIconStyleFromRawValue(defaults.stringForKey(toggleIconStyle.key()).value_or("")));
    restoreHotkey(defaults, hotkey);
    restoreHotkey(defaults, panelHotkey);
}

void Preferences::registerDefaults() {
    defaults.registerDefaults({
        {autoRehide.key(), true},
        {rehideDelay.key(), defaultRehideDelay},
        {hideOnClickOutside.key(), true},
        {showOnHover.key(), false},
        {showOnScroll.key(), false},
        {alwaysHiddenEnabled.key(), false},
        {refreshPanelOnOpen.key(), true},
        {clockEnabled.key(), false},
        {clockFormat.key(), std::string(defaultClockFormat)},
        {clickAction.key(), std::string(rawValue(ClickAction::revealInMenuBar))},
        {toggleIconStyle.key(), std::string(rawValue(ToggleIconStyle::chevron))},
    });
}

std::shared_ptr<Preferences> Preferences::shared(UserDefaults& standardUserDefaults) {
    static std::mutex mutex;
    static std::map<UserDefaults*, std::weak_ptr<Preferences>> instances;
    const std::lock_guard lock(mutex);
    auto& instance = instances[&standardUserDefaults];
    auto preferences = instance.lock();
    if (!preferences) {
        preferences = std::make_shared<Preferences>(standardUserDefaults);
        instance = preferences;
    }
    return preferences;
}

}  // namespace velmo
