#include "clock/clock_click_target.h"

#include "system/system_settings.h"

namespace velmo {

void ClockClickTarget::openSettings() const {
    if (settingsHandler)
        settingsHandler();
}

void ClockClickTarget::openSystemClock() const {
    openSystemSettings(workspace_, systemClockPane);
}

void ClockClickTarget::hideClock() const {
    if (hideHandler)
        hideHandler();
}

}  // namespace velmo
