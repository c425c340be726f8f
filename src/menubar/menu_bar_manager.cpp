#include "menubar/menu_bar_manager.h"

#include "menubar/divider_images.h"

namespace velmo {

MenuBarManager::MenuBarManager(std::shared_ptr<Preferences> preferences, const Platform& platform)
    : platform_(platform),
      preferences_(std::move(preferences)),
      hotkeys_(platform.hotKeys, platform.runLoop),
      toggle_(ControlItem::Kind::toggle, "Velmo.Toggle", platform),
      hiddenDivider_(ControlItem::Kind::divider, "Velmo.Divider", platform),
      alwaysHiddenDivider_(ControlItem::Kind::divider, "Velmo.AlwaysHiddenDivider", platform),
      panel_(platform),
      tasks_(platform.runLoop) {
    installImages();
    alwaysHiddenDivider_.statusItem().setVisible(preferences_->alwaysHiddenEnabled.value());
    installClock();
    installToolTips();
    installClickCallbacks();
    installPanelCallbacks();
    installHoverCallbacks();
    applyRevealLevel();
    installEventMonitors();
    observePreferences();
    registerHotkeys();
    updateHoverTracking(preferences_->showOnHover.value());
}

void MenuBarManager::installImages() {
    hiddenDivider_.image = dividerImage();
    hiddenDivider_.update();
    alwaysHiddenDivider_.image = alwaysHiddenDividerImage();
    alwaysHiddenDivider_.update();
}

void MenuBarManager::installClock() {
    clock_ = std::make_unique<MenuBarClock>(*preferences_, platform_);
    clock_->onOpenSettings = lifetime_.guard([this] { requestSettings(SettingsTab::clock); });
    clock_->onEnabled = lifetime_.guard([this] { revealForClockPlacement(); });
}

void MenuBarManager::installToolTips() {
    const auto install = [](ControlItem& item, const char* text) {
        if (StatusBarButton* button = item.statusItem().button())
            button->setToolTip(text);
    };
    install(toggle_, "Velmo — click to show or hide menu bar items, ⌥-click for always-hidden items");
    install(hiddenDivider_, "Velmo divider — ⌘-drag icons to the left of this to hide them");
    install(alwaysHiddenDivider_,
            "Velmo always-hidden divider — icons left of this stay hidden unless you ⌥-click the toggle");
}

void MenuBarManager::installClickCallbacks() {
    toggle_.onClick = lifetime_.guard([this](const Event& event) { handleToggleClick(event); });
    for (ControlItem* divider : {&hiddenDivider_, &alwaysHiddenDivider_})
        divider->onClick =
            lifetime_.guard([this, divider](const Event& event) { handleDividerClick(*divider, event); });
}

void MenuBarManager::installPanelCallbacks() {
    panel_.onActivate = lifetime_.guard([this](const PanelItem& item) { activate(item); });
    panel_.onOpenSettings = lifetime_.guard([this] { openSettings(); });
}

void MenuBarManager::installHoverCallbacks() {
    hoverTarget_.onEnter = lifetime_.guard([this] { hoverEntered(); });
    hoverTarget_.onExit = lifetime_.guard([this] { hoverExited(); });
}

// Work is posted, so that it is done after the event that caused it. A monitor that is refused is left out:
// the other triggers still work.
void MenuBarManager::installEventMonitors() {
    const auto install = [this](EventMask mask, std::function<void(const Event&)> handler) {
        if (auto monitor = platform_.events.addGlobalMonitor(mask, std::move(handler)))
            eventMonitors_.push_back(std::move(monitor));
    };
    install(maskOf(EventType::leftMouseDown) | maskOf(EventType::rightMouseDown),
            lifetime_.guard([this](const Event&) {
                platform_.runLoop.post(lifetime_.guard([this] { clickedOutside(); }));
            }));
    install(maskOf(EventType::scrollWheel), lifetime_.guard([this](const Event& event) {
        const double delta = event.scrollingDeltaY + event.scrollingDeltaX;
        platform_.runLoop.post(lifetime_.guard([this, delta] { scrolled(delta); }));
    }));
}

}  // namespace velmo
