#pragma once

#include "platform/view.h"
#include "preferences/preferences.h"
#include "system/permissions_model.h"

#include <functional>

namespace velmo {

class PanelTab {
public:
    /// The preferences outlive the tab.
    PanelTab(Preferences& preferences, const Platform& platform, std::function<void()> onOpenPanel)
        : permissions(platform), preferences_(preferences), onOpenPanel_(std::move(onOpenPanel)) {}

    PermissionsModel permissions;

    void appear() { permissions.refresh(); }

    View body();

private:
    View hiddenItemsPanel() const;
    View pictures() const;
    View permissionRows();

    Preferences& preferences_;
    std::function<void()> onOpenPanel_;
};

}  // namespace velmo
