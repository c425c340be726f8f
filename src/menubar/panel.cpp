#include "async/sleep.h"
#include "menubar/menu_bar_manager.h"
#include "platform/screen_capture.h"
#include "platform/window_factory.h"

namespace velmo {

namespace {

/// Seconds after which pictures are taken anew.
constexpr Seconds oldestPictures = 2.0;
/// Time for the menu bar to lay the icons out.
constexpr Seconds refreshDelay = 0.35;

std::vector<PanelItem> panelItems(const std::vector<MenuBarItemInfo>& items,
                                  const std::map<std::uint32_t, Image>& images) {
    std::vector<PanelItem> result;
    result.reserve(items.size());
    for (const MenuBarItemInfo& item : items) {
        const auto image = images.find(item.windowID);
        result.push_back({item, image != images.end() ? std::optional(image->second) : std::nullopt});
    }
    return result;
}

}  // namespace

void MenuBarManager::togglePanel() {
    if (panel_.isVisible()) {
        panel_.close();
    } else if (!platform_.screenCapture.preflightAccess()) {
        platform_.screenCapture.requestAccess();
        requestSettings(SettingsTab::panel);
    } else {
        tasks_.start(openPanel());
    }
}

Task<> MenuBarManager::openPanel() {
    const auto screen = menuBarScreen();
    const auto anchor = frameOnScreen(toggle_);
    if (!screen || !anchor)
        co_return;
    if (revealLevel_ != RevealLevel::none)
        co_await takeSnapshot();
    else if (isSnapshotOutdated())
        co_await refreshSnapshot();
    panel_.show(panelItems(snapshot_.hidden, snapshot_.images),
                panelItems(snapshot_.alwaysHidden, snapshot_.images), *screen, *anchor);
}

bool MenuBarManager::isSnapshotOutdated() const {
    const Seconds age = platform_.runLoop.now() - snapshot_.date;
    return (snapshot_.hidden.empty() && snapshot_.alwaysHidden.empty()) ||
           (preferences_->refreshPanelOnOpen.value() && age > oldestPictures);
}

bool MenuBarManager::isPanelInUse() const {
    return preferences_->clickAction.value() == ClickAction::showPanel ||
           preferences_->panelHotkey.value().has_value();
}

// Hidden items cannot be pictured: they are shown for a moment. Nobody cancels it, so that what it has shown
// is hidden again: it runs to its end, or ends with the manager.
Task<> MenuBarManager::refreshSnapshot() {
    changeRevealLevel(preferences_->alwaysHiddenEnabled.value() ? RevealLevel::all : RevealLevel::hidden);
    platform_.windows.prepare();
    co_await Sleep(platform_.runLoop, refreshDelay);
    co_await takeSnapshot();
    changeRevealLevel(RevealLevel::none);
}

}  // namespace velmo
