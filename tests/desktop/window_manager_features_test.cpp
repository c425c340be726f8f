#include "built_files.h"
#include "session_bus_desktop.h"
#include "window_managers.h"

#include <utility>
#include <vector>

namespace velmo::desktop {

namespace {

/// One round through each feature, with an ordinary window that the user works in.
class FeaturesUnder : public SessionBusDesktop, public testing::WithParamInterface<std::string> {
protected:
    void SetUp() override {
        DesktopSession::SetUp();
        startServer();
        startWindowManagerNamed(GetParam());
        startSessionBus();
    }

    void start(nlohmann::json defaults = nlohmann::json::object()) {
        defaults.emplace("autoRehide", false);
        writeDefaults(defaults);
        startVelmoOnBus();
        ordinary_ = startOrdinaryWindow();
        workInOrdinary();
    }
    void workInOrdinary() const {
        xdotool({"windowactivate", std::to_string(ordinary_)});
        ASSERT_TRUE(eventually([&] { return activeWindow() == ordinary_ && x().inputFocus() == ordinary_; }));
    }
    void clickElsewhere() const {
        const auto area = *x().area(ordinary_);
        xdotool({"mousemove", std::to_string(area.x + 20), std::to_string(area.y + area.height - 20), "click",
                 "1"});
    }
    void startAgain() const { outputOf({velmoProgram}, environment_); }
    /// Of a program that knows of no bus, where it would have an item of another kind.
    xcb_window_t startProgramWithIcon() {
        const auto bus = std::exchange(environment_["DBUS_SESSION_BUS_ADDRESS"], "disabled:");
        const auto icon = startTrayProgram("gxkb", "Gxkb");
        environment_["DBUS_SESSION_BUS_ADDRESS"] = bus;
        return icon;
    }
    void hide(xcb_window_t icon) const {
        superDrag(icon, farLeft);
        ASSERT_TRUE(eventually([&] { return isHidden(icon); }));
    }
    std::vector<std::uint32_t> calendar() const {
        // Where a window manager composites, there is a shadow around it, which may end off the screen.
        constexpr int margin = 16;
        const auto window = shown("Velmo.Popover");
        const auto area = window ? x().area(*window) : std::nullopt;
        if (!area)
            return {};
        return x().pixels(
            {area->x + margin, area->y + margin, area->width - 2 * margin, area->height - 2 * margin});
    }
    /// What is there once it has been drawn.
    std::vector<std::uint32_t> drawnCalendar() const {
        auto picture = calendar();
        EXPECT_TRUE(eventually([&] {
            xdotool({"sleep", "0.1"});
            const auto next = calendar();
            return next == std::exchange(picture, next);
        }));
        return picture;
    }

    xcb_window_t ordinary_ = XCB_WINDOW_NONE;
};

TEST_P(FeaturesUnder, IconsAreHiddenByADragRevealedByAClickAndHiddenByAClickElsewhere) {
    start();
    const auto icon = startProgramWithIcon();
    hide(icon);
    click(toggle());
    EXPECT_TRUE(eventually([&] { return isOnScreen(icon); }));
    clickElsewhere();
    EXPECT_TRUE(eventually([&] { return isHidden(icon); }));
    EXPECT_EQ(activeWindow(), ordinary_);
}

TEST_P(FeaturesUnder, TheTogglesMenuAndTheShortcutWork) {
    start({{"hideOnClickOutside", false},
           {"hotkey", {{"data", R"({"keyCode":40,"modifiers":1179648,"display":"\u21e7\u2318K"})"}}}});
    openMenuOf(toggle(), rightButton);
    chooseByKeys({"Down", "Return"});
    EXPECT_TRUE(eventually([&] { return !openMenu() && !dividerIsExpanded(); }));
    EXPECT_TRUE(eventually([&] { return x().inputFocus() == ordinary_; }));
    openMenuOf(toggle(), rightButton);
    clickElsewhere();
    EXPECT_TRUE(eventually([&] { return !openMenu(); }));
    EXPECT_FALSE(dividerIsExpanded());
    xdotool(
        {"keydown", "Super_L", "keydown", "Shift_L", "key", "45", "keyup", "Shift_L", "keyup", "Super_L"});
    EXPECT_TRUE(eventually([&] { return dividerIsExpanded(); }));
}

TEST_P(FeaturesUnder, ItemsOfBothKindsComeAndTheirMenusOpen) {
    start();
    const auto program = programWithItem("Mail");
    program->setMenu("/Menu", {0, {}, {{1, {{"label", std::string("Write")}}, {}}}});
    setMenuPath(*program);
    const auto item = untilShown("Mail");
    const auto icon = startProgramWithIcon();
    EXPECT_TRUE(isOnScreen(icon));
    openMenuOf(item, rightButton);
    chooseByKeys({"Down", "Return"});
    EXPECT_TRUE(eventually([&] { return program->callsOf("Event") > 0 && !openMenu(); }));
    click(item);
    EXPECT_TRUE(eventually([&] { return program->callsOf("Activate") == 1; }));
    EXPECT_FALSE(hasMenu("Gxkb"));
    click(icon, rightButton);
    EXPECT_TRUE(eventually([&] { return hasMenu("Gxkb"); }));
    xdotool({"key", "Escape"});
    EXPECT_TRUE(eventually([&] { return !hasMenu("Gxkb"); }));
}

TEST_P(FeaturesUnder, ThePanelOpensAndHandsAClickOn) {
    start({{"clickAction", "showPanel"}});
    const auto program = programWithItem("Mail");
    const auto item = untilShown("Mail");
    hide(item);
    openPanel();
    EXPECT_TRUE(eventually([&] { return isHidden(item); }));
    EXPECT_EQ(activeWindow(), ordinary_);
    const auto place = *panel();
    const int pictureX = place.x + place.height / 2;
    xdotool({"mousemove", std::to_string(pictureX), std::to_string(place.midY())});
    EXPECT_TRUE(eventually([&] { return x().windowUnderPointer() == shown("Velmo.Panel"); }));
    xdotool({"click", "1"});
    EXPECT_TRUE(eventually([&] { return !panel() && program->callsOf("Activate") == 1; }));
    EXPECT_TRUE(isOnScreen(item));
}

TEST_P(FeaturesUnder, TheCalendarHasTheKeyboardUntilAClickElsewhere) {
    start(clockDefaults());
    ASSERT_TRUE(eventually([&] {
        const auto item = shown("Velmo.Clock");
        return item && x().area(*item)->width > 20;
    }));
    click(*shown("Velmo.Clock"));
    ASSERT_TRUE(
        eventually([&] { return shown("Velmo.Popover") && x().inputFocus() == *shown("Velmo.Popover"); }));
    const auto month = drawnCalendar();
    xdotool({"key", "Next"});
    EXPECT_TRUE(eventually([&] { return calendar() != month; }));
    clickElsewhere();
    EXPECT_TRUE(eventually([&] { return !shown("Velmo.Popover"); }));
    EXPECT_TRUE(eventually([&] { return x().inputFocus() == ordinary_; }));
}

TEST_P(FeaturesUnder, WhatIsOpenMakesWayForAWindowThatFillsTheScreen) {
    start({{"clickAction", "showPanel"},
           {"clockEnabled", true},
           {"clockFormat", "HH:mm"},
           {"statusItemOrder", {"Velmo.Toggle", "Velmo.Clock", "Velmo.Divider"}}});
    hide(startProgramWithIcon());
    const auto setFullScreen = [&](bool isFullScreen) {
        outputOf({"wmctrl", "-i", "-r", std::to_string(ordinary_), "-b",
                  isFullScreen ? "add,fullscreen" : "remove,fullscreen"},
                 environment_);
        EXPECT_TRUE(eventually([&] { return (x().area(bar())->y < 0) == isFullScreen; }));
    };
    const auto expectGoes = [&](const std::string& what, const std::function<bool()>& isOpen) {
        ASSERT_TRUE(eventually(isOpen)) << what;
        setFullScreen(true);
        EXPECT_TRUE(eventually([&] { return !isOpen(); })) << what;
        setFullScreen(false);
        EXPECT_TRUE(stays([&] { return !isOpen(); }, milliseconds(300))) << what;
    };
    const auto panelIsOpen = [&] { return panel().has_value(); };
    ASSERT_TRUE(eventually([&] { return shown("Velmo.Clock").has_value(); }));
    click(*shown("Velmo.Clock"));
    expectGoes("calendar", [&] { return shown("Velmo.Popover").has_value(); });
    workInOrdinary();
    click(toggle());
    expectGoes("panel", panelIsOpen);
    openMenuOf(toggle(), rightButton);
    expectGoes("menu", [&] { return openMenu().has_value(); });
    movePointer(600, 500);
    movePointer(x().area(toggle())->midX(), x().area(toggle())->midY());
    expectGoes("tooltip", [&] { return openToolTip().has_value(); });
    click(toggle());
    EXPECT_TRUE(eventually(panelIsOpen)) << "the next click opens it";
}

TEST_P(FeaturesUnder, TheSettingsComeWithTheKeyboardAndRememberTheirPlace) {
    start();
    startAgain();
    ASSERT_TRUE(eventually([&] { return settingsWindow() && x().keyboardOwner() == *settingsWindow(); }));
    EXPECT_TRUE(eventually([&] { return activeWindow() == *settingsWindow(); }));
    // The first control is the choice of the toggle's picture.
    xdotool({"key", "Tab"});
    xdotool({"key", "End"});
    EXPECT_TRUE(eventually([&] { return readDefaults().value("toggleIconStyle", "") == "fridge"; }));
    outputOf({"wmctrl", "-i", "-r", std::to_string(*settingsWindow()), "-e", "0,131,97,-1,-1"}, environment_);
    ASSERT_TRUE(eventually([&] { return std::abs(x().area(*settingsWindow())->x - 131) < 40; }));
    ASSERT_TRUE(eventually([&] { return readDefaults().contains("windowPlace.Velmo.SettingsWindow"); }));
    const auto place = *x().area(*settingsWindow());
    stopVelmo();
    startVelmo();
    startAgain();
    ASSERT_TRUE(eventually([&] { return settingsWindow().has_value(); }));
    EXPECT_TRUE(eventually([&] { return x().area(*settingsWindow())->x == place.x; }))
        << x().area(*settingsWindow())->x;
    EXPECT_EQ(x().area(*settingsWindow())->y, place.y);
}

INSTANTIATE_TEST_SUITE_P(WindowManagers, FeaturesUnder, windowManagers,
                         [](const auto& manager) { return manager.param; });

}  // namespace

}  // namespace velmo::desktop
