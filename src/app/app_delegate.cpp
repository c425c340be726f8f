#include "app/app_delegate.h"

namespace velmo {

namespace {

constexpr const char* firstLaunchKey = "hasCompletedFirstLaunch";

}  // namespace

void AppDelegate::applicationDidFinishLaunching() {
    preferences_ = Preferences::shared(platform_.userDefaults);
    menuBarManager_ = std::make_unique<MenuBarManager>(preferences_, platform_);
    if (!preferences_->defaults.boolForKey(firstLaunchKey))
        preferences_->defaults.setBool(true, firstLaunchKey);
}

bool AppDelegate::applicationShouldHandleReopen(bool /*hasVisibleWindows*/) {
    return false;
}

}  // namespace velmo
