#include "app/app_delegate.h"

namespace velmo {

namespace {

constexpr const char* firstLaunchKey = "hasCompletedFirstLaunch";

}  // namespace

void AppDelegate::applicationDidFinishLaunching() {
    preferences_ = Preferences::shared(platform_.userDefaults);
    menuBarManager_ = std::make_unique<MenuBarManager>(preferences_, platform_);
    menuBarManager_->onOpenSettings =
        lifetime_.guard([this](std::optional<SettingsTab> tab) { openSettings(tab); });
    if (preferences_->defaults.boolForKey(firstLaunchKey))
        return;
    preferences_->defaults.setBool(true, firstLaunchKey);
    openSettings(SettingsTab::general);
}

bool AppDelegate::applicationShouldHandleReopen(bool /*hasVisibleWindows*/) {
    openSettings(std::nullopt);
    return false;
}

void AppDelegate::applicationPerform(ApplicationCommand command) {
    mainActor_.assumeIsolated();
    if (command == ApplicationCommand::quit)
        platform_.application.terminate();
    if (!menuBarManager_)
        return;
    switch (command) {
        case ApplicationCommand::toggle:
            menuBarManager_->toggleHidden();
            break;
        case ApplicationCommand::toggleAll:
            menuBarManager_->toggleAlwaysHidden();
            break;
        case ApplicationCommand::panel:
            menuBarManager_->togglePanel();
            break;
        case ApplicationCommand::settings:
            openSettings(std::nullopt);
            break;
        case ApplicationCommand::quit:
            break;
    }
}

void AppDelegate::openSettings(std::optional<SettingsTab> tab) {
    if (!settingsWindowController_)
        settingsWindowController_ = std::make_unique<SettingsWindowController>(
            Preferences::shared(platform_.userDefaults), lifetime_.guard([this] { openPanel(); }), platform_);
    settingsWindowController_->show(tab);
    platform_.application.activateIgnoringOtherApps(true);
}

void AppDelegate::openPanel() {
    mainActor_.assumeIsolated();
    if (menuBarManager_)
        menuBarManager_->togglePanel();
}

}  // namespace velmo
