#include "model/live_menu_bar.h"
#include "model/menu_kind.h"

namespace velmo {

LiveMenuBar::LiveMenuBar(const ModelPreferences& stored) {
    store(stored);
    auto& bar = desktop_.statusBar();
    bar.addOther({"at the right", otherProcess, "Right", std::nullopt, 24});
    desktop_.menus().setScript([this](SimulatedOpenMenu& menu) { useOwnMenu(menu); });
    desktop_.hotKeys().setCallObserver(
        [this](const SimulatedHotKeyService::Call& call) { hotKeyCalled(call); });
    // The calendar's days take no part in this, and a good deal of time.
    desktop_.dates().calendar().setKnowsNothing(true);
    preferences_ = std::make_shared<Preferences>(desktop_.userDefaults());
    manager_ = std::make_unique<MenuBarManager>(preferences_, desktop_.platform());
    manager_->onOpenSettings = [this](std::optional<SettingsTab> tab) {
        account_.settingsRequested(tab, desktop_.screenCapture().requestCount());
    };
    bar.addOther({"shown", otherProcess, "Shown", std::nullopt, 24});
    bar.addOther({"hidden", otherProcess, "H", std::nullopt, 24});
    bar.addOther({"always hidden", otherProcess, "A", std::nullopt, 24});
    bar.moveRightOf("Velmo.Divider", "shown");
    bar.moveRightOf("Velmo.AlwaysHiddenDivider", "hidden");
    bar.moveLeftOf("always hidden", "Velmo.Clock");
    desktop_.screenCapture().setShareableWindows(
        ScreenCapture::WindowNumbers{windowOf("hidden"), windowOf("always hidden")});
}

void LiveMenuBar::store(const ModelPreferences& stored) {
    auto& defaults = desktop_.userDefaults();
    defaults.setBool(stored.autoRehide, "autoRehide");
    defaults.setDouble(stored.rehideDelay, "rehideDelay");
    defaults.setBool(stored.hideOnClickOutside, "hideOnClickOutside");
    defaults.setBool(stored.showOnHover, "showOnHover");
    defaults.setBool(stored.showOnScroll, "showOnScroll");
    defaults.setBool(stored.alwaysHiddenEnabled, "alwaysHiddenEnabled");
    defaults.setBool(stored.clockEnabled, "clockEnabled");
    // A text that time does not change.
    defaults.setObject(std::string("'clock'"), "clockFormat");
    defaults.setBool(stored.refreshPanelOnOpen, "refreshPanelOnOpen");
    defaults.setObject(std::string(rawValue(stored.clickAction)), "clickAction");
    defaults.setObject(std::string(rawValue(stored.toggleIconStyle)), "toggleIconStyle");
    storeShortcut(stored.hotkey, "hotkey");
    storeShortcut(stored.panelHotkey, "panelHotkey");
}

void LiveMenuBar::storeShortcut(std::size_t choice, const std::string& key) {
    const auto binding = bindingOf(choice);
    if (const auto json = binding ? encodeHotkeyBinding(*binding) : std::nullopt)
        desktop_.userDefaults().setObject(*json, key);
}

void LiveMenuBar::hotKeyCalled(const SimulatedHotKeyService::Call& call) {
    switch (call.action) {
        case SimulatedHotKeyService::Action::installHandler:
            account_.handlerInstalled();
            break;
        case SimulatedHotKeyService::Action::registerHotKey:
            account_.hotKeyRegistered(call.id);
            break;
        case SimulatedHotKeyService::Action::releaseHotKey:
            account_.hotKeyReleased(call.id);
            break;
        case SimulatedHotKeyService::Action::removeHandler:
            account_.handlerRemoved();
            break;
    }
}

bool LiveMenuBar::end() {
    manager_.reset();
    desktop_.runLoop().runPosted();
    desktop_.runLoop().runUntilIdle();
    return desktop_.statusBar().items().empty() && desktop_.hotKeys().held().empty() &&
           desktop_.hotKeys().handledTypes().empty() && desktop_.runLoop().timerCount() == 0;
}

}  // namespace velmo
