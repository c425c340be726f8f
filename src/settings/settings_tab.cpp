#include "settings/settings_tab.h"

#include <algorithm>

namespace velmo {

namespace {

struct TabTexts {
    std::string_view rawValue;
    std::string_view displayName;
    std::string_view symbolName;
};

TabTexts textsOf(SettingsTab tab) {
    switch (tab) {
        case SettingsTab::general:
            return {"general", "General", "gearshape"};
        case SettingsTab::hiding:
            return {"hiding", "Hiding", "eye.slash"};
        case SettingsTab::clock:
            return {"clock", "Clock", "clock"};
        case SettingsTab::panel:
            return {"panel", "Panel", "rectangle.topthird.inset.filled"};
        case SettingsTab::spacing:
            return {"spacing", "Spacing", "arrow.left.and.right"};
    }
    return {};
}

}  // namespace

std::string_view rawValue(SettingsTab tab) {
    return textsOf(tab).rawValue;
}

std::optional<SettingsTab> settingsTabFromRawValue(std::string_view text) {
    const auto found = std::find_if(allSettingsTabs.begin(), allSettingsTabs.end(),
                                    [text](SettingsTab tab) { return rawValue(tab) == text; });
    return found == allSettingsTabs.end() ? std::nullopt : std::optional(*found);
}

std::string_view displayName(SettingsTab tab) {
    return textsOf(tab).displayName;
}

std::string_view symbolName(SettingsTab tab) {
    return textsOf(tab).symbolName;
}

}  // namespace velmo
