#pragma once

#include "platform/platform.h"
#include "platform/view.h"
#include "preferences/published.h"
#include "system/menu_bar_spacing.h"

namespace velmo {

class SpacingTab {
public:
    explicit SpacingTab(const Platform& platform)
        : preset(MenuBarSpacing::currentPreset(platform.globalPreferences)), platform_(platform) {}

    /// The chosen one; at first, the one in force.
    Published<MenuBarSpacing::Preset> preset;

    View body();

private:
    View spacing();
    View logOut() const;
    void choose(const std::string& tag);

    Platform platform_;
};

}  // namespace velmo
