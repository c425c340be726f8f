#pragma once

#include "preferences/published.h"
#include "settings/settings_tab.h"

namespace velmo {

/// What the settings window remembers while it is closed.
struct SettingsState {
    Published<SettingsTab> selectedTab{SettingsTab::general};
};

}  // namespace velmo
