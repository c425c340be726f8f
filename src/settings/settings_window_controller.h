#pragma once

#include "platform/window.h"
#include "settings/settings_view.h"

namespace velmo {

/// The one settings window. It stays alive while it is closed.
class SettingsWindowController {
public:
    SettingsWindowController(const std::shared_ptr<Preferences>& preferences,
                             std::function<void()> onOpenPanel, const Platform& platform);
    SettingsWindowController(const SettingsWindowController&) = delete;
    SettingsWindowController& operator=(const SettingsWindowController&) = delete;

    /// Brings the window up. An absent tab stands for the one that was seen last.
    void show(std::optional<SettingsTab> tab);

private:
    void setUpWindow();
    void viewChanged();
    void describe();

    LoginItemManager loginItem_;
    SettingsState state_;
    SettingsView view_;
    /// Null where the system cannot show any.
    std::unique_ptr<Window> window_;
    Lifetime lifetime_;
};

}  // namespace velmo
