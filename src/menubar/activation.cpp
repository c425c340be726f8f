#include "async/sleep.h"
#include "hidden_items/menu_bar_items.h"
#include "hidden_items/post_click.h"
#include "menubar/menu_bar_manager.h"
#include "platform/accessibility.h"

#include <algorithm>

namespace velmo {

namespace {

/// Time for the menu bar to lay the icons out.
constexpr Seconds layoutDelay = 0.25;

}  // namespace

void MenuBarManager::activate(const PanelItem& item) {
    tasks_.start(clickRealItem(item.info.windowID));
}

Task<> MenuBarManager::clickRealItem(std::uint32_t windowID) {
    panel_.close();
    const auto isWanted = [windowID](const MenuBarItemInfo& item) { return item.windowID == windowID; };
    const bool isAlwaysHidden =
        std::any_of(snapshot_.alwaysHidden.begin(), snapshot_.alwaysHidden.end(), isWanted);
    const auto needed = isAlwaysHidden ? RevealLevel::all : RevealLevel::hidden;
    if (revealLevel_ != RevealLevel::all && revealLevel_ != needed)
        changeRevealLevel(needed);
    // The icons are not to vanish under the click, and stay for a while after it, for the menu that it opens.
    invalidateRehideTimer();
    auto rearm = lifetime_.guard([this] { restartRehideTimer(); });
    // Nobody cancels this task: it goes on to the click, or ends with the manager.
    co_await Sleep(platform_.runLoop, layoutDelay);

    const auto screen = menuBarScreen();
    const auto items =
        screen ? currentMenuBarItems(*screen, ownItemRanges(), platform_) : std::vector<MenuBarItemInfo>();
    const auto item = std::find_if(items.begin(), items.end(), isWanted);
    if (item != items.end()) {
        if (platform_.accessibility.isProcessTrusted()) {
            co_await postClick({item->bounds.midX(), item->bounds.midY()}, std::nullopt, platform_);
        } else {
            platform_.accessibility.isProcessTrusted(true);
            requestSettings(SettingsTab::panel);
        }
    }
    rearm();
}

}  // namespace velmo
