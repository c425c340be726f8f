#include "settings/spacing_tab.h"

#include "views/builders.h"

namespace velmo {

View SpacingTab::body() {
    return form({spacing(), logOut()});
}

View SpacingTab::spacing() {
    std::vector<PickerOption> options;
    options.reserve(MenuBarSpacing::allPresets.size());
    for (const auto value : MenuBarSpacing::allPresets)
        options.push_back({std::string(MenuBarSpacing::rawValue(value)),
                           std::string(MenuBarSpacing::displayName(value)),
                           std::string(MenuBarSpacing::description(value))});
    return section(
        "Menu bar item spacing",
        {picker({"Spacing", std::move(options), std::string(MenuBarSpacing::rawValue(preset.value())),
                 PickerStyle::radioGroup, [this](const std::string& tag) { choose(tag); }})},
        "Tighter spacing fits more icons beside a notch. macOS applies the new spacing to each "
        "app when it relaunches, so log out and back in to apply it everywhere at once.");
}

void SpacingTab::choose(const std::string& tag) {
    const auto chosen = MenuBarSpacing::presetFromRawValue(tag);
    if (!chosen)
        return;
    preset.set(*chosen);
    MenuBarSpacing::apply(*chosen, platform_.globalPreferences);
}

View SpacingTab::logOut() const {
    return section("",
                   {button("Log Out…", [&session = platform_.session] { MenuBarSpacing::logOut(session); })},
                   "Shows the standard macOS logout confirmation. Save your work first.");
}

}  // namespace velmo
