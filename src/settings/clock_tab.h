#pragma once

#include "platform/dates.h"
#include "platform/lifetime.h"
#include "platform/platform.h"
#include "platform/scoped_timer.h"
#include "platform/view.h"
#include "preferences/preferences.h"

namespace velmo {

class ClockTab {
public:
    /// The preferences outlive the tab.
    ClockTab(Preferences& preferences, const Platform& platform);
    ClockTab(const ClockTab&) = delete;
    ClockTab& operator=(const ClockTab&) = delete;

    /// What the preview shows. Follows the time of day, second by second and with each change of the time
    /// zone, while the tab is shown.
    Published<Date> now;

    void appear();
    void disappear();

    View body();

private:
    View clock() const;
    View format();
    View presetPicker();
    View systemClock() const;
    void choosePreset(const std::string& tag);

    Preferences& preferences_;
    Platform platform_;
    ScopedTimer ticker_;
    std::unique_ptr<NotificationObserver> timeZoneObserver_;
    Lifetime lifetime_;
};

}  // namespace velmo
