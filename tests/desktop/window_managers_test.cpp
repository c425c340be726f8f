#include "bar_under.h"

#include <algorithm>
#include <cstdlib>
#include <vector>

namespace velmo::desktop {

namespace {

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
    expectBarOnAnotherWorkspace(GetParam());
}

TEST_P(BarUnder, HidesAndRevealsAndTakesNoFocus) {
    startWithTwoSections();
    expectDragsAndClicksToTakeNoFocus();
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

INSTANTIATE_TEST_SUITE_P(WindowManagers, BarUnder, windowManagers,
                         [](const auto& manager) { return manager.param; });

}  // namespace

}  // namespace velmo::desktop
