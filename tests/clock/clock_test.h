#pragma once

#include "clock/date_of.h"
#include "clock/menu_bar_clock.h"
#include "platform/simulated/simulated_desktop.h"
#include "views/view_search.h"

#include <gtest/gtest.h>

namespace velmo {

/// The clock in UTC, with a pattern of minutes.
class ClockTest : public testing::Test {
protected:
    static constexpr const char* itemName = "Velmo.Clock";

    ClockTest() {
        desktop_.runLoop().setNow(dateOf(2025, 7, 5, 13, 4, 9));
        preferences_.clockFormat.set("HH:mm");
    }

    void start(bool enabled = true) {
        preferences_.clockEnabled.set(enabled);
        clock_ = std::make_unique<MenuBarClock>(preferences_, desktop_.platform());
        clock_->onEnabled = [this] { ++enabledCount_; };
    }
    void setEnabled(bool enabled) {
        preferences_.clockEnabled.set(enabled);
        desktop_.runLoop().runPosted();
    }
    void setFormat(const std::string& pattern) {
        preferences_.clockFormat.set(pattern);
        desktop_.runLoop().runPosted();
    }

    SimulatedStatusItem* item() { return desktop_.statusBar().item(itemName); }
    SimulatedStatusBarButton& button() { return *item()->button(); }
    std::string title() { return button().title(); }
    void click() { ASSERT_TRUE(desktop_.click(itemName)); }
    void rightClick() { ASSERT_TRUE(desktop_.click(itemName, MouseButton::right)); }
    const std::vector<SimulatedPopover*>& popovers() { return desktop_.windows().popovers(); }

    SimulatedDesktop desktop_;
    Preferences preferences_{desktop_.userDefaults()};
    std::unique_ptr<MenuBarClock> clock_;
    int enabledCount_ = 0;
};

}  // namespace velmo
