#include "session_bus_desktop.h"
#include "window_managers.h"

#include <fstream>

namespace velmo::desktop {

namespace {

/// What the bar is beside a window manager, and what reaches it past one.
class BarUnder : public DesktopSession, public testing::WithParamInterface<std::string> {
protected:
    void SetUp() override {
        DesktopSession::SetUp();
        startServer();
    }
    void start(const nlohmann::json& defaults = {{"autoRehide", false}, {"hideOnClickOutside", false}}) {
        startWindowManagerNamed(GetParam());
        writeDefaults(defaults);
        startVelmo();
    }
    /// The topmost child of the root window at that place is the bar.
    bool barIsOnTopAt(int pointX, int pointY) const {
        xcb_window_t top = XCB_WINDOW_NONE;
        for (const auto window : x().children(x().root())) {
            const auto area = x().area(window);
            if (area && x().isViewable(window) && pointX >= area->x && pointX < area->x + area->width &&
                pointY >= area->y && pointY < area->y + area->height)
                top = window;
        }
        return top == bar();
    }
    bool barStaysOnTopAt(int pointX, int pointY) const {
        return eventually([&] { return barIsOnTopAt(pointX, pointY); }) &&
               stays([&] { return barIsOnTopAt(pointX, pointY); }, milliseconds(300));
    }
    void change(xcb_window_t window, const std::string& states) const {
        outputOf({"wmctrl", "-i", "-r", std::to_string(window), "-b", states}, environment_);
    }
    std::uint32_t activeWindow() const {
        const auto active = x().cardinals(x().root(), "_NET_ACTIVE_WINDOW");
        return active.empty() ? 0 : active.front();
    }
    xcb_window_t startActiveWindow() {
        const auto window = startOrdinaryWindow();
        xdotool({"windowactivate", "--sync", std::to_string(window)});
        EXPECT_TRUE(eventually([&] { return activeWindow() == window; }));
        return window;
    }
};

TEST_P(BarUnder, HasItsStripToItself) {
    start();
    const auto window = startActiveWindow();
    change(window, "add,maximized_vert,maximized_horz");
    ASSERT_TRUE(eventually([&] { return x().area(window)->width > 1200; }));
    EXPECT_TRUE(eventually([&] { return x().area(window)->y >= 26; })) << x().area(window)->y;
    EXPECT_GE(x().area(window)->y, 26);
    EXPECT_TRUE(barStaysOnTopAt(640, 13));
}

TEST_P(BarUnder, LiesAboveWindowsAndBelowOneThatFillsTheScreen) {
    start();
    const auto window = startActiveWindow();
    xdotool({"windowmove", std::to_string(window), "200", "5"});
    xdotool({"windowraise", std::to_string(window)});
    EXPECT_TRUE(barStaysOnTopAt(300, 13));
    change(window, "add,fullscreen");
    EXPECT_TRUE(eventually([&] { return x().area(window)->height == 720 && !barIsOnTopAt(300, 13); }));
    EXPECT_TRUE(stays([&] { return !barIsOnTopAt(300, 13); }, milliseconds(300)));
    change(window, "remove,fullscreen");
    EXPECT_TRUE(barStaysOnTopAt(300, 13));
}

TEST_P(BarUnder, IsThereOnEveryWorkspace) {
    start();
    startActiveWindow();
    const auto workspace = [&] { return x().cardinals(x().root(), "_NET_CURRENT_DESKTOP").front(); };
    const auto former = workspace();
    if (GetParam() == "i3")
        outputOf({"i3-msg", "workspace", "2"}, environment_);
    else
        outputOf({"wmctrl", "-s", "1"}, environment_);
    ASSERT_TRUE(eventually([&] { return workspace() != former; }));
    EXPECT_TRUE(barStaysOnTopAt(640, 13));
    EXPECT_TRUE(isOnScreen(toggle()));
    click(toggle());
    EXPECT_TRUE(eventually([&] { return !dividerIsExpanded(); }));
}

TEST_P(BarUnder, HidesAndRevealsAndTakesNoFocus) {
    start({{"autoRehide", false},
           {"hideOnClickOutside", false},
           {"alwaysHiddenEnabled", true},
           {"statusItemOrder",
            {"Velmo.Toggle", "Velmo.Divider", "Velmo.AlwaysHiddenDivider", "parcellite.Parcellite"}}});
    const auto window = startActiveWindow();
    const auto hidden = startTrayProgram("gxkb", "Gxkb");
    superDrag(hidden, farLeft);
    const auto alwaysHidden = startTrayProgram("parcellite", "Parcellite");
    ASSERT_TRUE(eventually([&] { return isHidden(hidden) && isHidden(alwaysHidden); }));
    click(toggle());
    EXPECT_TRUE(eventually([&] { return isOnScreen(hidden); }));
    EXPECT_TRUE(isHidden(alwaysHidden));
    // icewm keeps this click to itself.
    if (GetParam() != "icewm") {
        clickHolding("Alt_L", toggle());
        EXPECT_TRUE(eventually([&] { return isOnScreen(alwaysHidden); }));
    }
    click(toggle());
    EXPECT_TRUE(eventually([&] { return isHidden(hidden) && isHidden(alwaysHidden); }));
    EXPECT_EQ(activeWindow(), window);
}

TEST_P(BarUnder, StaysWhenTheWindowManagerIsReplaced) {
    start();
    const auto icon = startTrayProgram("gxkb", "Gxkb");
    replaceWindowManager(GetParam());
    const auto window = startActiveWindow();
    change(window, "add,maximized_vert,maximized_horz");
    ASSERT_TRUE(eventually([&] { return x().area(window)->width > 1200; }));
    EXPECT_TRUE(eventually([&] { return x().area(window)->y >= 26; }));
    EXPECT_TRUE(barStaysOnTopAt(640, 13));
    superDrag(icon, farLeft);
    ASSERT_TRUE(eventually([&] { return isHidden(icon); }));
    click(toggle());
    EXPECT_TRUE(eventually([&] { return isOnScreen(icon); }));
}

INSTANTIATE_TEST_SUITE_P(WindowManagers, BarUnder, windowManagers,
                         [](const auto& manager) { return manager.param; });

}  // namespace

}  // namespace velmo::desktop
