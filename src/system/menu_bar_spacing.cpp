#include "system/menu_bar_spacing.h"

#include <algorithm>
#include <cmath>

namespace velmo {

namespace {

// Points.
constexpr std::int64_t compactSpacing = 10;
constexpr std::int64_t tightSpacing = 6;

std::optional<std::int64_t> spacingOf(MenuBarSpacing::Preset preset) {
    switch (preset) {
        case MenuBarSpacing::Preset::system:
            break;
        case MenuBarSpacing::Preset::compact:
            return compactSpacing;
        case MenuBarSpacing::Preset::tight:
            return tightSpacing;
    }
    return std::nullopt;
}

}  // namespace

std::string_view MenuBarSpacing::rawValue(Preset preset) {
    switch (preset) {
        case Preset::system:
            return "system";
        case Preset::compact:
            return "compact";
        case Preset::tight:
            return "tight";
    }
    return {};
}

std::optional<MenuBarSpacing::Preset> MenuBarSpacing::presetFromRawValue(std::string_view text) {
    const auto found = std::find_if(allPresets.begin(), allPresets.end(),
                                    [text](Preset preset) { return rawValue(preset) == text; });
    return found == allPresets.end() ? std::nullopt : std::optional(*found);
}

std::string_view MenuBarSpacing::displayName(Preset preset) {
    switch (preset) {
        case Preset::system:
            return "System default";
        case Preset::compact:
            return "Compact";
        case Preset::tight:
            return "Tight";
    }
    return {};
}

std::string_view MenuBarSpacing::description(Preset preset) {
    switch (preset) {
        case Preset::system:
            return "Apple's standard spacing.";
        case Preset::compact:
            return "About a third more icons fit.";
        case Preset::tight:
            return "As dense as the menu bar allows.";
    }
    return {};
}

// Spacings that were written by hand are nobody's preset; they count as the middle one.
MenuBarSpacing::Preset MenuBarSpacing::currentPreset(const GlobalPreferences& preferences) {
    const auto value = preferences.value(statusItemSpacingKey);
    const double* spacing = value ? std::get_if<double>(&*value) : nullptr;
    if (spacing == nullptr)
        return Preset::system;
    return std::trunc(*spacing) == tightSpacing ? Preset::tight : Preset::compact;
}

void MenuBarSpacing::apply(Preset preset, GlobalPreferences& preferences) {
    const auto spacing = spacingOf(preset);
    preferences.setValue(statusItemSpacingKey, spacing);
    preferences.setValue(statusItemSelectionPaddingKey, spacing);
    preferences.synchronize();
}

void MenuBarSpacing::logOut(Session& session) {
    session.requestLogOut();
}

}  // namespace velmo
