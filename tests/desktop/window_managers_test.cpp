#include "window_managers.h"

#include "desktop_session.h"

#include <algorithm>
#include <cstdlib>
#include <vector>

namespace velmo::desktop {

namespace {

constexpr int barHeight = 26;

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
    bool barIsOnTopAt(int pointX, int pointY) const { return x().topAt(pointX, pointY) == bar(); }
    /// A window manager may raise a window once more after the bar has come back.
    bool barStaysOnTopAt(int pointX, int pointY) const {
        return eventually([&] {
            return barIsOnTopAt(pointX, pointY) &&
                   stays([&] { return barIsOnTopAt(pointX, pointY); }, milliseconds(300));
        });
    }
    bool isLeftTo(xcb_window_t window) const {
        const auto fills = [&] {
            const auto area = x().area(window);
            return area && area->height > 700 && x().isViewable(window) && !barIsOnTopAt(300, 13);
        };
        return eventually(fills) && stays(fills, milliseconds(300));
    }
    std::vector<xcb_window_t> seenWindows() const {
        auto windows = x().children(x().root());
        std::erase_if(windows, [&](xcb_window_t window) { return !x().isViewable(window); });
        return windows;
    }
    bool staysWithoutMoreThan(const std::vector<xcb_window_t>& windows) const {
        const auto isNew = [&](xcb_window_t window) {
            return std::find(windows.begin(), windows.end(), window) == windows.end();
        };
        return stays(
            [&] {
                const auto present = seenWindows();
                return std::none_of(present.begin(), present.end(), isNew);
            },
            milliseconds(300));
    }
    void change(xcb_window_t window, const std::string& states) const {
        outputOf({"wmctrl", "-i", "-r", std::to_string(window), "-b", states}, environment_);
    }
    void activate(xcb_window_t window) const {
        xdotool({"windowactivate", std::to_string(window)});
        ASSERT_TRUE(eventually([&] { return activeWindow() == window; }));
    }
    xcb_window_t startActiveWindow(const std::string& title = "Ordinary") {
        const auto window = startOrdinaryWindow(title);
        activate(window);
        return window;
    }
    /// How often the order or the places of windows change in a second.
    int changesOfWindows() const {
        const std::uint32_t mask = XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY;
        const std::uint32_t none = 0;
        xcb_change_window_attributes(x().raw(), x().root(), XCB_CW_EVENT_MASK, &mask);
        int count = 0;
        stays(
            [&] {
                x().exists(x().root());
                while (auto* event = xcb_poll_for_event(x().raw())) {
                    count += (event->response_type & 0x7f) == XCB_CONFIGURE_NOTIFY ? 1 : 0;
                    std::free(event);
                }
                return true;
            },
            milliseconds(1000));
        xcb_change_window_attributes(x().raw(), x().root(), XCB_CW_EVENT_MASK, &none);
        return count;
    }
    void startOnTwoScreens(const nlohmann::json& defaults) {
        // Some window managers know only screens that have an output, of which there is one.
        outputOf({"xrandr", "--setmonitor", "*left", "640/160x720/180+0+0", "none"}, environment_);
        outputOf({"xrandr", "--setmonitor", "right", "640/160x720/180+640+0", "screen"}, environment_);
        start(defaults);
    }
    bool revealsByScrollingAt(int pointX, int pointY) const {
        xdotool({"mousemove", std::to_string(pointX), std::to_string(pointY), "click", "4"});
        const bool reveals = eventually([&] { return !dividerIsExpanded(); }, milliseconds(500));
        // Which counts once in some time.
        stays([] { return true; }, milliseconds(700));
        return reveals;
    }
    /// As large as the screen and without a frame, as games do it that know nothing of full screens.
    xcb_window_t startGame() const {
        const xcb_window_t window = xcb_generate_id(x().raw());
        xcb_create_window(x().raw(), XCB_COPY_FROM_PARENT, window, x().root(), 0, 0, 1280, 720, 0,
                          XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, 0, nullptr);
        const auto set = [&](const char* name, const char* type, const std::vector<std::uint32_t>& numbers) {
            xcb_change_property(x().raw(), XCB_PROP_MODE_REPLACE, window, x().atom(name), x().atom(type), 32,
                                static_cast<std::uint32_t>(numbers.size()), numbers.data());
        };
        set("_MOTIF_WM_HINTS", "_MOTIF_WM_HINTS", {2, 0, 0, 0, 0});
        // Place and size, by the user.
        std::vector<std::uint32_t> sizeHints = {3, 0, 0, 1280, 720};
        sizeHints.resize(18);
        set("WM_NORMAL_HINTS", "WM_SIZE_HINTS", sizeHints);
        xcb_map_window(x().raw(), window);
        EXPECT_TRUE(eventually([&] { return x().isViewable(window); }));
        // Not all are shown where they have asked to be.
        xdotool({"windowmove", std::to_string(window), "0", "0", "windowsize", std::to_string(window), "1280",
                 "720"});
        return window;
    }
    void expectStripToItself(xcb_window_t window) const {
        change(window, "add,maximized_vert,maximized_horz");
        const auto isMaximized = [&] {
            const auto area = *x().area(window);
            return area.width > 1200 && area.y >= barHeight && area.y + area.height > 650;
        };
        EXPECT_TRUE(eventually(isMaximized)) << x().area(window)->y;
        EXPECT_TRUE(barStaysOnTopAt(640, 13));
    }
    void expectDragAndClickWork(xcb_window_t icon) const {
        superDrag(icon, farLeft);
        ASSERT_TRUE(eventually([&] { return isHidden(icon); }));
        click(toggle());
        EXPECT_TRUE(eventually([&] { return isOnScreen(icon); }));
        click(toggle());
        EXPECT_TRUE(eventually([&] { return isHidden(icon); }));
    }
    std::string nextWindowManager() const {
        const auto& names = windowManagerNames;
        const auto next = std::find(names.begin(), names.end(), GetParam()) + 1;
        return next == names.end() ? names.front() : *next;
    }
};

TEST_P(BarUnder, HasItsStripToItself) {
    start();
    expectStripToItself(startActiveWindow());
}

TEST_P(BarUnder, LiesAboveAllWindowsButOneThatFillsTheScreen) {
    start();
    const auto window = startActiveWindow();
    change(window, "add,above");
    xdotool({"windowmove", std::to_string(window), "200", "5"});
    xdotool({"windowraise", std::to_string(window)});
    EXPECT_TRUE(barStaysOnTopAt(300, 13));
    change(window, "remove,above");
    EXPECT_TRUE(barStaysOnTopAt(300, 13));
    change(window, "add,fullscreen");
    EXPECT_TRUE(isLeftTo(window));
    EXPECT_EQ(changesOfWindows(), 0);
    EXPECT_EQ(activeWindow(), window);
    change(window, "remove,fullscreen");
    EXPECT_TRUE(barStaysOnTopAt(300, 13));
    EXPECT_EQ(changesOfWindows(), 0);
}

TEST_P(BarUnder, ComesBackWhenTheUserTurnsFromAWindowThatFillsTheScreen) {
    start();
    const auto other = startActiveWindow("Other");
    const auto window = startActiveWindow("Film");
    change(window, "add,fullscreen");
    EXPECT_TRUE(isLeftTo(window));
    activate(other);
    EXPECT_TRUE(barStaysOnTopAt(300, 13));
    activate(window);
    // One window manager has ended the full screen.
    change(window, "add,fullscreen");
    EXPECT_TRUE(isLeftTo(window));
    activate(other);
    change(other, "add,fullscreen");
    EXPECT_TRUE(isLeftTo(other));
    xcb_kill_client(x().raw(), other);
    ASSERT_TRUE(eventually([&] { return !x().exists(other); }));
    xcb_kill_client(x().raw(), window);
    ASSERT_TRUE(eventually([&] { return !x().exists(window); }));
    EXPECT_TRUE(barStaysOnTopAt(300, 13));
}

TEST_P(BarUnder, CastsNoShadow) {
    constexpr std::uint32_t sky = 0x9db7d6;
    const xcb_window_t desk = xcb_generate_id(x().raw());
    const std::uint32_t values[] = {sky, 1};
    xcb_create_window(x().raw(), XCB_COPY_FROM_PARENT, desk, x().root(), 0, 0, 1280, 720, 0,
                      XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT,
                      XCB_CW_BACK_PIXEL | XCB_CW_OVERRIDE_REDIRECT, values);
    xcb_map_window(x().raw(), desk);
    start();
    const std::uint32_t lowest = XCB_STACK_MODE_BELOW;
    xcb_configure_window(x().raw(), desk, XCB_CONFIG_WINDOW_STACK_MODE, &lowest);
    const auto isSky = [&] { return x().pixel(640, barHeight + 2) == sky; };
    EXPECT_TRUE(eventually([&] { return isSky() && x().pixel(640, 13) == lightBar; }));
    EXPECT_TRUE(stays(isSky, milliseconds(300)));
}

TEST_P(BarUnder, LeavesMenusOfProgramsAboveIt) {
    start();
    const auto window = startActiveWindow();
    const xcb_window_t menu = xcb_generate_id(x().raw());
    const std::uint32_t unmanaged = 1;
    xcb_create_window(x().raw(), XCB_COPY_FROM_PARENT, menu, x().root(), 200, 5, 100, 100, 0,
                      XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, XCB_CW_OVERRIDE_REDIRECT,
                      &unmanaged);
    xcb_map_window(x().raw(), menu);
    ASSERT_TRUE(x().isViewable(menu));
    EXPECT_TRUE(stays([&] { return x().topAt(250, 13) == menu; }, milliseconds(300)));
    change(window, "add,above");
    xdotool({"windowraise", std::to_string(window)});
    EXPECT_TRUE(stays([&] { return x().topAt(250, 13) == menu; }, milliseconds(300)));
    EXPECT_TRUE(barIsOnTopAt(400, 13));
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
    expectStripToItself(startActiveWindow("Second"));
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
    clickHolding("Alt_L", toggle());
    EXPECT_TRUE(eventually([&] { return isOnScreen(alwaysHidden); }));
    click(toggle());
    EXPECT_TRUE(eventually([&] { return isHidden(hidden) && isHidden(alwaysHidden); }));
    EXPECT_EQ(activeWindow(), window);
}

TEST_P(BarUnder, ADragWithSuperOpensNoMenuOfTheWindowManager) {
    start();
    const auto icon = startTrayProgram("gxkb", "Gxkb");
    ASSERT_TRUE(barStaysOnTopAt(640, 13));
    const auto before = seenWindows();
    const auto place = *x().area(icon);
    // As slowly as a hand at least.
    xdotool({"mousemove", std::to_string(place.midX()), "13", "keydown", "Super_L", "mousedown", "1", "sleep",
             "0.1", "mousemove", std::to_string(farLeft), "13", "sleep", "0.1", "mouseup", "1", "keyup",
             "Super_L"});
    ASSERT_TRUE(eventually([&] { return isHidden(icon); }));
    EXPECT_TRUE(staysWithoutMoreThan(before));
}

TEST_P(BarUnder, AClickWithSuperOpensNoMenuOfTheWindowManager) {
    start();
    const auto icon = startTrayProgram("gxkb", "Gxkb");
    ASSERT_TRUE(barStaysOnTopAt(640, 13));
    const auto place = *x().area(icon);
    movePointer(place.midX(), place.midY());
    const auto before = seenWindows();
    xdotool({"keydown", "Super_L", "sleep", "0.1", "mousedown", "1", "sleep", "0.1", "mouseup", "1", "sleep",
             "0.1", "keyup", "Super_L"});
    EXPECT_TRUE(staysWithoutMoreThan(before));
    EXPECT_EQ(x().area(icon), place);
}

TEST_P(BarUnder, EscapePutsADraggedItemBack) {
    start();
    const auto icon = startTrayProgram("gxkb", "Gxkb");
    startActiveWindow();
    const auto place = *x().area(icon);
    const auto isBack = [&] { return x().area(icon) == place; };
    xdotool({"mousemove", std::to_string(place.midX()), "13", "keydown", "Super_L", "mousedown", "1", "sleep",
             "0.05", "mousemove", std::to_string(place.midX() - 100), "13", "sleep", "0.05", "mousemove",
             std::to_string(place.midX() - 200), "13"});
    ASSERT_TRUE(eventually([&] { return x().area(icon)->x == place.x - 200; }));
    xdotool({"key", "Escape"});
    EXPECT_TRUE(eventually(isBack, milliseconds(2000)));
    xdotool({"mouseup", "1", "keyup", "Super_L"});
    EXPECT_TRUE(stays(isBack, milliseconds(300)));
    superDrag(icon, farLeft);
    EXPECT_TRUE(eventually([&] { return isHidden(icon); })) << "the next drag is one";
}

TEST_P(BarUnder, OnlyABarThatIsSeenIsScrolled) {
    start({{"autoRehide", false}, {"hideOnClickOutside", false}, {"showOnScroll", true}});
    const auto window = startActiveWindow();
    change(window, "add,fullscreen");
    ASSERT_TRUE(isLeftTo(window));
    EXPECT_FALSE(revealsByScrollingAt(600, 13));
    change(window, "remove,fullscreen");
    ASSERT_TRUE(barStaysOnTopAt(600, 13));
    EXPECT_TRUE(revealsByScrollingAt(600, 13));
}

TEST_P(BarUnder, StaysOnItsScreenWhenAWindowFillsAnother) {
    startOnTwoScreens({{"autoRehide", false}, {"hideOnClickOutside", false}, {"showOnScroll", true}});
    const auto window = startActiveWindow();
    const auto moveTo = [&](int left) {
        if (GetParam() == "i3")
            outputOf({"i3-msg", "move", "container", "to", "output", left == 0 ? "left" : "right"},
                     environment_);
        else
            xdotool({"windowmove", std::to_string(window), std::to_string(left + 100), "200"});
        EXPECT_TRUE(eventually([&] {
            const int middle = x().area(window)->midX();
            return middle > left && middle < left + 640;
        }));
    };
    const auto fills = [&](int left) {
        const auto area = *x().area(window);
        return std::abs(area.x - left) < 3 && area.y < 3 && area.width > 630 && area.width <= 640 &&
               area.height > 710;
    };
    moveTo(640);
    change(window, "add,fullscreen");
    EXPECT_TRUE(eventually([&] { return fills(640); })) << x().area(window)->x;
    EXPECT_TRUE(barStaysOnTopAt(300, 13));
    EXPECT_FALSE(revealsByScrollingAt(900, 13)) << "no bar is there";
    EXPECT_TRUE(revealsByScrollingAt(600, 13));
    if (GetParam() == "xfwm4")
        return;
    change(window, "remove,fullscreen");
    moveTo(0);
    change(window, "add,fullscreen");
    EXPECT_TRUE(eventually([&] { return fills(0) && !barIsOnTopAt(300, 13); })) << x().area(window)->x;
    change(window, "remove,fullscreen");
    EXPECT_TRUE(barStaysOnTopAt(300, 13));
}

TEST_P(BarUnder, MakesWayForAProgramThatIsAsLargeAsTheScreenAndWantsNoFrame) {
    start();
    const auto game = startGame();
    if (GetParam() == "i3" || GetParam() == "xfwm4" || GetParam() == "metacity") {
        // They keep such a window off docks.
        EXPECT_TRUE(stays([&] { return x().area(game)->y >= barHeight; }, milliseconds(300)));
        EXPECT_TRUE(barStaysOnTopAt(300, 13));
        return;
    }
    activate(game);
    EXPECT_TRUE(isLeftTo(game));
    startActiveWindow("Other");
    activate(game);
    EXPECT_TRUE(isLeftTo(game));
    xcb_destroy_window(x().raw(), game);
    EXPECT_TRUE(barStaysOnTopAt(300, 13));
}

TEST_P(BarUnder, StaysWhenAnotherWindowManagerTakesOver) {
    start();
    const auto icon = startTrayProgram("gxkb", "Gxkb");
    replaceWindowManager(GetParam(), nextWindowManager());
    const auto window = startActiveWindow();
    expectStripToItself(window);
    change(window, "add,fullscreen");
    EXPECT_TRUE(isLeftTo(window));
    change(window, "remove,fullscreen");
    EXPECT_TRUE(barStaysOnTopAt(640, 13));
    expectDragAndClickWork(icon);
}

TEST_P(BarUnder, StaysWhenTheWindowManagerCrashesAndComesBack) {
    start();
    const auto icon = startTrayProgram("gxkb", "Gxkb");
    crashWindowManager();
    EXPECT_TRUE(barStaysOnTopAt(640, 13));
    startWindowManagerNamed(GetParam());
    expectStripToItself(startActiveWindow());
    expectDragAndClickWork(icon);
}

INSTANTIATE_TEST_SUITE_P(WindowManagers, BarUnder, windowManagers,
                         [](const auto& manager) { return manager.param; });

}  // namespace

}  // namespace velmo::desktop
