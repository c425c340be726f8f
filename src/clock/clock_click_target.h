#pragma once

#include "menubar/click_target.h"
#include "platform/workspace.h"

namespace velmo {

/// Receives what the user does with the clock: its button's action, and those of its menu.
class ClockClickTarget : public ClickTarget {
public:
    ClockClickTarget(const Application& application, Workspace& workspace)
        : ClickTarget(application), workspace_(workspace) {}

    std::function<void()> settingsHandler;
    std::function<void()> hideHandler;

    void openSettings() const;
    void openSystemClock() const;
    void hideClock() const;

private:
    Workspace& workspace_;
};

}  // namespace velmo
