#pragma once

#include "app/main_actor.h"
#include "menubar/menu_bar_manager.h"
#include "platform/application.h"
#include "settings/settings_window_controller.h"

#include <memory>

namespace velmo {

/// Sets the program up once it has been launched, and owns what it consists of.
class AppDelegate : public ApplicationDelegate {
public:
    explicit AppDelegate(const Platform& platform) : platform_(platform) {}

    void applicationDidFinishLaunching() override;
    bool applicationShouldHandleReopen(bool hasVisibleWindows) override;
    /// Before launching has finished there is nothing yet to show or hide.
    void applicationPerform(ApplicationCommand command) override;

    /// Shows the settings and brings the application to the front. An absent tab stands for the one that was
    /// seen last.
    void openSettings(std::optional<SettingsTab> tab);

    /// Null before launching has finished.
    MenuBarManager* menuBarManager() const { return menuBarManager_.get(); }

private:
    void openPanel();

    Platform platform_;
    MainActor mainActor_;
    /// Kept until the process ends, so that all who ask for the shared ones get these.
    std::shared_ptr<Preferences> preferences_;
    std::unique_ptr<MenuBarManager> menuBarManager_;
    /// Made when the settings are first asked for.
    std::unique_ptr<SettingsWindowController> settingsWindowController_;
    Lifetime lifetime_;
};

}  // namespace velmo
