#pragma once

#include "menubar/menu_bar_manager.h"
#include "platform/simulated/simulated_desktop.h"

#include <gtest/gtest.h>

namespace velmo {

/// The manager on a simulated desktop that has one item of another application, 100 points wide, at the far
/// right. The pointer begins outside the menu bar. Without access to pictures of the screen, so that
/// nothing but the test's own subject runs.
class ManagerTest : public testing::Test {
protected:
    static constexpr const char* toggle = "Velmo.Toggle";
    static constexpr const char* hiddenDivider = "Velmo.Divider";
    static constexpr const char* alwaysHiddenDivider = "Velmo.AlwaysHiddenDivider";
    /// On the other application's item.
    static constexpr Point inMenuBar{1400, 890};
    static constexpr Point outside{300, 400};

    ManagerTest() {
        desktop_.statusBar().addOther({"system", 7, "System", {}, 100});
        desktop_.movePointer(outside);
        desktop_.screenCapture().setGranted(false);
    }

    void start() {
        preferences_ = std::make_shared<Preferences>(desktop_.userDefaults());
        manager_ = std::make_unique<MenuBarManager>(preferences_, desktop_.platform());
    }

    RevealLevel level() const { return manager_->revealLevel(); }
    double length(const char* name) { return desktop_.statusBar().item(name)->length(); }
    SimulatedStatusBarButton& button(const char* name) { return *desktop_.statusBar().item(name)->button(); }
    std::string toggleSymbol() { return std::get<Symbol>(button(toggle).image()->content).name; }
    /// Seconds until the earliest timer runs; -1 where there is none.
    Seconds nextTimer() { return desktop_.runLoop().nextTimer().value_or(-1); }

    void clickToggle() { ASSERT_TRUE(desktop_.click(toggle)); }
    void optionClickToggle() { ASSERT_TRUE(desktop_.click(toggle, MouseButton::left, modifier::option)); }
    void clickElsewhere(MouseButton mouseButton = MouseButton::left) {
        desktop_.clickAtPointer(mouseButton);
        desktop_.runLoop().runPosted();
    }
    void scroll(double deltaX, double deltaY) {
        desktop_.scrollAtPointer(deltaX, deltaY);
        desktop_.runLoop().runPosted();
    }
    /// Brings the level about by clicks on the toggle.
    void reveal(RevealLevel wanted) {
        while (level() != RevealLevel::none)
            clickToggle();
        if (wanted == RevealLevel::hidden)
            clickToggle();
        if (wanted == RevealLevel::all)
            optionClickToggle();
        ASSERT_EQ(level(), wanted);
    }

    SimulatedDesktop desktop_;
    std::shared_ptr<Preferences> preferences_;
    std::unique_ptr<MenuBarManager> manager_;
};

}  // namespace velmo
