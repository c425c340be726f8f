#include "desktop_session.h"

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <memory>

namespace velmo::desktop {

namespace {

class MenuBarWindow : public DesktopSession {
protected:
    void SetUp() override {
        DesktopSession::SetUp();
        startServer();
    }

    bool barIsOnTopAt(int pointX, int pointY) const { return x().topAt(pointX, pointY) == bar(); }

    void setResource(const std::string& resource) {
        const auto file = home_ / "resources";
        std::ofstream(file) << resource << '\n';
        outputOf({"xrdb", "-merge", file}, environment_);
    }
};

TEST_F(MenuBarWindow, ReservesItsStripOfTheScreen) {
    startWindowManager();
    startVelmo();
    EXPECT_EQ(*x().area(bar()), (Area{0, 0, 1280, 26}));
    const auto workArea = [&] {
        auto area = x().cardinals(x().root(), "_NET_WORKAREA");
        area.resize(4);
        return area;
    };
    EXPECT_TRUE(eventually([&] {
        return workArea() == std::vector<std::uint32_t>{0, 26, 1280, 720 - 26};
    })) << testing::PrintToString(workArea());
}

TEST_F(MenuBarWindow, MaximizedWindowLeavesTheBarFree) {
    startWindowManager();
    startVelmo();
    const auto window = startOrdinaryWindow();
    xdotool({"windowactivate", "--sync", std::to_string(window)});
    outputOf({"wmctrl", "-i", "-r", std::to_string(window), "-b", "add,maximized_vert,maximized_horz"},
             environment_);
    ASSERT_TRUE(eventually([&] { return x().area(window)->width > 1200; }));
    EXPECT_GE(x().area(window)->y, 26);
    EXPECT_TRUE(barIsOnTopAt(640, 13));
}

TEST_F(MenuBarWindow, StaysAboveOrdinaryWindowsAndBelowAFullScreenOne) {
    startWindowManager();
    startVelmo();
    const auto window = startOrdinaryWindow();
    xdotool({"windowmove", std::to_string(window), "200", "5"});
    xdotool({"windowactivate", "--sync", std::to_string(window)});
    xdotool({"windowraise", std::to_string(window)});
    EXPECT_TRUE(eventually([&] { return barIsOnTopAt(300, 13); }));

    const auto fullScreen = [&](const std::string& action) {
        outputOf({"wmctrl", "-i", "-r", std::to_string(window), "-b", action + ",fullscreen"}, environment_);
    };
    fullScreen("add");
    EXPECT_TRUE(eventually([&] { return x().area(window)->height == 720 && !barIsOnTopAt(300, 13); }));
    fullScreen("remove");
    EXPECT_TRUE(eventually([&] { return barIsOnTopAt(300, 13); }));
}

TEST_F(MenuBarWindow, NeverTakesTheFocus) {
    startWindowManager();
    startVelmo();
    const auto window = startOrdinaryWindow();
    xdotool({"windowactivate", "--sync", std::to_string(window)});
    const auto focus = x().cardinals(x().root(), "_NET_ACTIVE_WINDOW");
    click(toggle());
    ASSERT_TRUE(eventually([&] { return !dividerIsExpanded(); }));
    EXPECT_EQ(x().cardinals(x().root(), "_NET_ACTIVE_WINDOW"), focus);
    ASSERT_EQ(focus.front(), window);
}

TEST_F(MenuBarWindow, WorksWithoutAWindowManager) {
    startVelmo();
    const auto icon = startTrayProgram("gxkb", "Gxkb");
    superDrag(icon, farLeft);
    ASSERT_TRUE(eventually([&] { return !isOnScreen(icon); }));
    click(toggle());
    EXPECT_TRUE(eventually([&] { return isOnScreen(icon); }));
}

TEST_F(MenuBarWindow, FollowsTheResolutionOfTheScreen) {
    startVelmo();
    const auto icon = startTrayProgram("gxkb", "Gxkb");
    outputOf({"xrandr", "--fb", "1000x600"}, environment_);
    ASSERT_TRUE(eventually([&] { return x().area(bar())->width == 1000; }));
    EXPECT_TRUE(eventually([&] {
        const auto area = *x().area(toggle());
        return area.x + area.width == 1000 - 6 && isOnScreen(icon);
    }));
}

TEST_F(MenuBarWindow, StandsOnThePrimaryMonitor) {
    addMonitor("left", {0, 0, 640, 720}, "none");
    addMonitor("*right", {640, 0, 640, 720}, "screen");
    startVelmo();
    const auto icon = startTrayProgram("gxkb", "Gxkb");
    EXPECT_TRUE(eventually([&] { return *x().area(bar()) == (Area{640, 0, 640, 26}); }));
    EXPECT_EQ(x().area(toggle())->x + 31, 1280 - 6);
    EXPECT_TRUE(isOnScreen(icon));
    removeMonitor("right");
    addMonitor("*left", {0, 0, 640, 720}, "screen");
    EXPECT_TRUE(eventually([&] { return x().area(bar())->x == 0 && isOnScreen(icon); }));
}

TEST_F(MenuBarWindow, ShowsATooltipForTheToggle) {
    startVelmo();
    const auto windows = x().children(x().root()).size();
    const auto place = *x().area(toggle());
    movePointer(place.midX(), place.midY());
    const auto toolTip = [&] {
        for (const auto window : x().children(x().root())) {
            const auto area = x().area(window);
            const bool below =
                area && area->y >= 26 && area->height > 10 && area->height < 60 && area->width > 100;
            if (below && x().isViewable(window))
                return true;
        }
        return false;
    };
    EXPECT_TRUE(eventually(toolTip, milliseconds(4000)));
    EXPECT_GT(x().children(x().root()).size(), windows);
    movePointer(300, 400);
    EXPECT_TRUE(eventually([&] { return !toolTip(); }));
}

TEST_F(MenuBarWindow, DrawsAtTheDesktopsScale) {
    setResource("Xft.dpi: 192");
    startVelmo();
    EXPECT_EQ(x().area(bar())->height, 52);
    EXPECT_EQ(x().area(toggle())->width, 62);
    EXPECT_TRUE(eventually([&] { return dividerIsExpanded(); }));
    const auto icon = startTrayProgram("gxkb", "Gxkb");
    EXPECT_TRUE(eventually([&] { return x().area(icon)->width == 40; }));
    EXPECT_TRUE(isOnScreen(icon));
}

TEST_F(MenuBarWindow, ItemsBeyondTheReachOfCoordinatesStayOffTheScreen) {
    setResource("Xft.dpi: 192");
    writeDefaults({{"alwaysHiddenEnabled", true}, {"autoRehide", false}});
    startVelmo();
    const auto icon = startTrayProgram("gxkb", "Gxkb");
    clickHolding("Alt_L", toggle());
    ASSERT_TRUE(eventually([&] { return x().area(alwaysHiddenDivider())->width == 24; }));
    superDrag(icon, farLeft);
    ASSERT_TRUE(eventually([&] { return x().area(icon)->x < x().area(alwaysHiddenDivider())->x; }));
    click(toggle());
    // 40,000 pixels left of the screen is more than a window can be told.
    ASSERT_TRUE(eventually([&] { return isHidden(alwaysHiddenDivider()); }));
    EXPECT_TRUE(eventually([&] { return x().area(icon)->x < -20000; }));
    EXPECT_LT(x().area(alwaysHiddenDivider())->x + x().area(alwaysHiddenDivider())->width, 0);
    clickHolding("Alt_L", toggle());
    EXPECT_TRUE(eventually([&] { return isOnScreen(icon); }));
}

TEST_F(MenuBarWindow, IsBareWhereALongDividerReaches) {
    startVelmo();
    ASSERT_TRUE(eventually([&] { return dividerIsExpanded(); }));
    const int beforeToggle = x().area(toggle())->x - 1;
    EXPECT_EQ(x().childAt(bar(), beforeToggle, 13), xcb_window_t{XCB_WINDOW_NONE});
    EXPECT_EQ(x().childAt(bar(), 0, 13), xcb_window_t{XCB_WINDOW_NONE});
    click(toggle());
    ASSERT_TRUE(eventually([&] { return !dividerIsExpanded(); }));
    EXPECT_EQ(x().childAt(bar(), beforeToggle, 13), divider());
    EXPECT_EQ(x().childAt(bar(), 0, 13), xcb_window_t{XCB_WINDOW_NONE});
}

TEST_F(MenuBarWindow, KeepsPressesOnTheBareBarFromTheDesktop) {
    const std::uint32_t presses = XCB_EVENT_MASK_BUTTON_PRESS;
    xcb_change_window_attributes(x().raw(), x().root(), XCB_CW_EVENT_MASK, &presses);
    startVelmo();
    const auto reachTheDesktop = [&](int atX, int atY) {
        movePointer(atX, atY);
        int count = 0;
        for (const char* button : {"1", "2", "3", "4", "5"}) {
            xdotool({"click", button});
            x().area(x().root());
            while (const std::unique_ptr<xcb_generic_event_t, decltype(&std::free)> event{
                xcb_poll_for_event(x().raw()), &std::free})
                count += (event->response_type & 0x7f) == XCB_BUTTON_PRESS ? 1 : 0;
        }
        return count;
    };
    ASSERT_TRUE(eventually([&] { return dividerIsExpanded(); }));
    EXPECT_EQ(reachTheDesktop(300, 300), 5);
    EXPECT_EQ(reachTheDesktop(300, 13), 0);
    click(toggle());
    ASSERT_TRUE(eventually([&] { return !dividerIsExpanded(); }));
    EXPECT_EQ(reachTheDesktop(300, 13), 0);
}

TEST_F(MenuBarWindow, FollowsTheDesktopsSettingsLive) {
    const auto settings = home_ / "xsettingsd.conf";
    const auto write = [&](const std::string& theme, int resolution) {
        std::ofstream(settings) << "Net/ThemeName \"" << theme << "\"\nXft/DPI " << resolution * 1024 << '\n';
    };
    write("Adwaita", 96);
    const auto manager = run({"xsettingsd", "-c", settings});
    ASSERT_TRUE(eventually([&] { return x().selectionOwner("_XSETTINGS_S0") != XCB_WINDOW_NONE; }));
    startVelmo();
    ASSERT_TRUE(eventually([&] { return x().pixel(640, 5) == lightBar; }));
    const auto colors = [&] {
        return x().cardinals(x().selectionOwner("_NET_SYSTEM_TRAY_S0"), "_NET_SYSTEM_TRAY_COLORS");
    };
    ASSERT_EQ(colors().size(), 12U);
    EXPECT_LT(colors().front(), 0x4000U) << "dark text";

    write("Adwaita-dark", 96);
    manager.signal(SIGHUP);
    EXPECT_TRUE(eventually([&] { return x().pixel(640, 5) == darkBar; }));
    EXPECT_TRUE(eventually([&] { return colors().front() > 0xc000U; })) << "light text";

    write("Adwaita", 144);
    manager.signal(SIGHUP);
    EXPECT_TRUE(eventually([&] { return x().pixel(640, 5) == lightBar && x().area(bar())->height == 39; }));
}

}  // namespace

}  // namespace velmo::desktop
