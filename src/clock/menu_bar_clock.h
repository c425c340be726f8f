#pragma once

#include "clock/calendar_popover_view.h"
#include "clock/clock_click_target.h"
#include "platform/platform.h"
#include "platform/popover.h"
#include "platform/scoped_timer.h"
#include "preferences/preferences.h"

#include <vector>

namespace velmo {

/// A status item that shows date and time by the user's pattern, while the preferences want one. A click
/// opens a calendar, a right click a menu.
class MenuBarClock {
public:
    /// The preferences outlive the clock.
    MenuBarClock(Preferences& preferences, const Platform& platform);
    MenuBarClock(const MenuBarClock&) = delete;
    MenuBarClock& operator=(const MenuBarClock&) = delete;

    /// The user wants to see the clock's settings.
    std::function<void()> onOpenSettings;
    /// The user has switched the clock on, and its item has been made.
    std::function<void()> onEnabled;

    /// Makes the item unless there is one. `announce` tells that the user has switched the clock on.
    void start(bool announce);
    /// Removes the item. What it showed last is remembered: a new item shows nothing until the text is
    /// another one.
    void stop();
    /// Shows the time of day, where that is not what was shown last.
    void refreshTitle();

    /// Points, origin at the bottom left of the primary screen. Absent while the clock is off or not on a
    /// screen.
    std::optional<Rect> screenFrame() const;

private:
    void observePreferences();
    void setUpButton(StatusBarButton& made) const;
    void startTimer();
    /// Even where it is the same text. While there is nothing to show, an item that shows nothing is left
    /// alone.
    void rewriteTitle();
    void showTitle(StatusBarButton& shown, const std::string& text);
    std::string currentText() const;
    /// Null while there is none.
    StatusBarButton* button() const;

    void clicked(const Event& event);
    void showMenu(StatusBarButton& under);
    Menu menu();
    void togglePopover(StatusBarButton& under);
    void openPopover(StatusBarButton& under);

    Platform platform_;
    Preferences& preferences_;
    std::unique_ptr<StatusItem> statusItem_;
    ScopedTimer timer_;
    /// What the popover shows.
    std::unique_ptr<CalendarPopoverView> calendar_;
    std::unique_ptr<Popover> popover_;
    std::unique_ptr<DateFormatter> formatter_;
    std::string lastText_;
    std::shared_ptr<ClockClickTarget> target_;
    std::vector<Subscription> cancellables_;
    std::unique_ptr<NotificationObserver> timeZoneObserver_;
    Lifetime lifetime_;
};

}  // namespace velmo
