#pragma once

#include "async/task_scope.h"
#include "clock/menu_bar_clock.h"
#include "hidden_items/closed_interval.h"
#include "hidden_items/hidden_items_panel_controller.h"
#include "hidden_items/menu_bar_item_info.h"
#include "hotkeys/hotkey_manager.h"
#include "menubar/control_item.h"
#include "menubar/hover_target.h"
#include "menubar/reveal_level.h"
#include "platform/events.h"
#include "platform/image.h"
#include "platform/lifetime.h"
#include "platform/scoped_timer.h"
#include "preferences/preferences.h"
#include "settings/settings_tab.h"

#include <cstdint>
#include <map>
#include <vector>

namespace velmo {

/// Owns everything that the program has in the menu bar, and decides how much of the menu bar is shown.
/// Whatever changes the reveal level applies it right after.
class MenuBarManager {
public:
    /// What was last seen of the hidden items while they were shown.
    struct Snapshot {
        /// From left to right, as in the menu bar.
        std::vector<MenuBarItemInfo> hidden;
        std::vector<MenuBarItemInfo> alwaysHidden;
        /// The latest picture of each window, by its number.
        std::map<std::uint32_t, Image> images;
        Date date = distantPast;
    };

    /// Places the items in the menu bar, hides what is to be hidden, and begins to listen.
    MenuBarManager(std::shared_ptr<Preferences> preferences, const Platform& platform);
    MenuBarManager(const MenuBarManager&) = delete;
    MenuBarManager& operator=(const MenuBarManager&) = delete;

    /// Called with each wish to see the settings; an absent tab stands for the one that was seen last.
    std::function<void(std::optional<SettingsTab>)> onOpenSettings;

    RevealLevel revealLevel() const { return revealLevel_; }

    /// Makes the items and the re-hide timer match the level.
    void applyRevealLevel();
    void restartRehideTimer();
    /// Does not stop the timer that is pending: whoever may replace one invalidates it first.
    void scheduleRehideTimer(Seconds interval);

    void handleToggleClick(const Event& event);
    void handleDividerClick(ControlItem& divider, const Event& event);

    void toggleHidden();
    void toggleAlwaysHidden();
    /// Closes the panel where it is shown. Without access to pictures of the screen, asks for it and for the
    /// settings that explain it.
    void togglePanel();
    void openSettings();
    /// Returns once the menu has closed.
    void showToggleMenu(ControlItem& item);
    /// Gives up the shortcuts that are registered, and registers those that the preferences have.
    void registerHotkeys();

    /// Shows the whole menu bar long enough to drag a new clock to its place.
    void revealForClockPlacement();

    /// Clicks the real item, wherever it is by now, after the panel has been closed and the item been shown.
    void activate(const PanelItem& item);

    /// What is known of the hidden items.
    const Snapshot& snapshot() const { return snapshot_; }

    bool isPointerInMenuBar() const;

    /// The item's button: points, origin at the bottom left of the primary screen. Absent while it is not on
    /// a screen.
    static std::optional<Rect> frameOnScreen(const ControlItem& item);
    /// The x values that the program's own visible items take, less the dividers that are expanded. The
    /// clock's come last.
    std::vector<ClosedInterval> ownItemRanges() const;

private:
    void installImages();
    void installClock();
    void installToolTips();
    void installClickCallbacks();
    void installPanelCallbacks();
    void installHoverCallbacks();
    void installEventMonitors();
    void observePreferences();

    Menu toggleMenu();
    void requestSettings(std::optional<SettingsTab> tab) const;

    /// The toggle's screen, or else the main one. Absent where there is neither.
    std::optional<Screen> menuBarScreen();

    /// Takes the place of the one that is pending. Nothing happens without access to pictures of the screen.
    void scheduleSnapshot(Seconds delay);
    Task<> takeSnapshotAfter(Seconds delay);
    /// Pictures what is shown at once.
    Task<> takeSnapshot();
    Task<> openPanel();
    bool isSnapshotOutdated() const;
    /// True where a click or a shortcut opens the panel. The menu alone does not count.
    bool isPanelInUse() const;
    Task<> refreshSnapshot();
    Task<> clickRealItem(std::uint32_t windowID);

    void changeRevealLevel(RevealLevel level);
    void invalidateRehideTimer();
    void rehideTimerFired();

    void clickedOutside();
    void hideAfterClickOutside();
    void scrolled(double delta);

    void updateHoverTracking(bool enabled);
    void hoverEntered();
    void hoverExited();
    void revealByHover();

    void alwaysHiddenEnabledChanged(bool enabled);

    Platform platform_;
    std::shared_ptr<Preferences> preferences_;
    HotkeyManager hotkeys_;
    std::optional<std::uint32_t> toggleHotkeyID_;
    std::optional<std::uint32_t> panelHotkeyID_;
    ControlItem toggle_;
    ControlItem hiddenDivider_;
    ControlItem alwaysHiddenDivider_;
    HiddenItemsPanelController panel_;
    std::unique_ptr<MenuBarClock> clock_;
    HoverTarget hoverTarget_;
    std::vector<Subscription> cancellables_;
    std::shared_ptr<Timer> rehideTimer_;
    std::vector<std::unique_ptr<EventMonitor>> eventMonitors_;
    std::unique_ptr<TrackingArea> hoverTrackingArea_;
    ScopedTimer hoverWorkItem_;
    Date lastScrollToggle_ = distantPast;
    Snapshot snapshot_;
    TaskHandle snapshotTask_;
    RevealLevel revealLevel_ = RevealLevel::none;
    /// Menus of ours that are open: nothing hides by itself meanwhile.
    int openMenus_ = 0;
    TaskScope tasks_;
    Lifetime lifetime_;
};

}  // namespace velmo
