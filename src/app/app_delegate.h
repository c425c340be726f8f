#pragma once

#include "menubar/menu_bar_manager.h"
#include "platform/application.h"

#include <memory>

namespace velmo {

/// Sets the program up once it has been launched, and owns what it consists of.
class AppDelegate : public ApplicationDelegate {
public:
    explicit AppDelegate(const Platform& platform) : platform_(platform) {}

    void applicationDidFinishLaunching() override;
    bool applicationShouldHandleReopen(bool hasVisibleWindows) override;

    /// Null before launching has finished.
    MenuBarManager* menuBarManager() const { return menuBarManager_.get(); }

private:
    Platform platform_;
    /// Kept until the process ends, so that all who ask for the shared ones get these.
    std::shared_ptr<Preferences> preferences_;
    std::unique_ptr<MenuBarManager> menuBarManager_;
};

}  // namespace velmo
