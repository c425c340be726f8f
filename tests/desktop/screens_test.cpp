#include "screens_session.h"

#include <utility>

namespace velmo::desktop {

namespace {

TEST_F(ScreensSession, BarFollowsThePrimaryMonitorFromSideToSide) {
    setMonitors({left, right});
    start();
    expectBarOn(left.area);
    for (const bool isRevealed : {false, true}) {
        if (isRevealed)
            reveal();
        makePrimary(right);
        expectBarOn(right.area);
        makePrimary(left);
        expectBarOn(left.area);
    }
    // What it does there is done there.
    makePrimary(right);
    expectBarOn(right.area);
    click(toggle());
    ASSERT_TRUE(eventually([&] { return dividerIsExpanded(); }));
    expectBarOn(right.area);
}

TEST_F(ScreensSession, PrimaryMonitorBelowAnotherReservesNothingOfThat) {
    setMonitors({left, below});
    start();
    makePrimary(below);
    expectBarOn(below.area, false);
    reveal();
    expectBarOn(below.area, false);
    makePrimary(left);
    expectBarOn(left.area);
    makePrimary(below);
    expectBarOn(below.area, false);
    remove(below);
    expectBarOn(left.area);
}

TEST_F(ScreensSession, MonitorThatVanishesLeavesTheBarToTheOther) {
    setMonitors({right, left});
    start();
    expectBarOn(right.area);
    remove(right);
    expectBarOn(left.area);
    setMonitors({right, left});
    expectBarOn(right.area);
    reveal();
    remove(right);
    expectBarOn(left.area);
}

TEST_F(ScreensSession, WithoutMonitorsTheBarIsAtTheTopOfTheWholeScreen) {
    setMonitors({right, left});
    start();
    remove(right);
    remove(left);
    expectBarOn({0, 0, 2560, 1440});
    setMonitors({left, right});
    expectBarOn(left.area);
}

TEST_F(ScreensSession, TenQuickChangesEndWhereTheLastOneDoes) {
    setMonitors({left, right, below});
    startRevealed();
    for (int change = 0; change < 10; ++change) {
        const auto& next = change % 3 == 0 ? right : change % 3 == 1 ? below : left;
        setMonitor({next.name, {next.area.x, next.area.y, next.area.width - 10 * change, next.area.height}},
                   true);
    }
    const Area last = {right.area.x, right.area.y, right.area.width - 90, right.area.height};
    expectBarOn(last);
    click(toggle());
    ASSERT_TRUE(eventually([&] { return dividerIsExpanded(); }));
    expectBarOn(last);
}

TEST_F(ScreensSession, ResolutionChangesWhileItemsAreHiddenAndWhileTheyAreRevealed) {
    start();
    for (const bool isRevealed : {false, true}) {
        if (isRevealed)
            reveal();
        for (const auto& [width, height] :
             {std::pair(1024, 768), std::pair(1920, 1080), std::pair(2560, 1440)}) {
            setMode(width, height);
            expectBarOn({0, 0, width, height});
        }
    }
}

TEST_F(ScreensSession, ItemsThatNoLongerFitReturnWithTheRoom) {
    const Monitor narrow{"left", {0, 0, 640, 480}};
    setMonitors({left});
    startRevealed();
    // They stand closer, as close as they can.
    for (int number = 0; number < 60; ++number)
        dockIcon("more" + std::to_string(number));
    before_ = names();
    expectBarOn(left.area);
    const auto wide = items();
    setMonitors({narrow});
    ASSERT_TRUE(eventually([&] { return areLaidOut(narrow.area); }));
    EXPECT_EQ(names(), before_);
    EXPECT_TRUE(isInside(areaOf("Toggle"), narrow.area));
    EXPECT_TRUE(isUnseen("four"));
    setMonitors({left});
    EXPECT_TRUE(eventually([&] { return items() == wide; }));
}

TEST_F(ScreensSession, DragGoesOnWhereTheBarHasGone) {
    setMonitors({right, left});
    startRevealed();
    drag("two", -20);
    remove(right);
    ASSERT_TRUE(eventually([&] { return x().area(bar()) == Area{0, 0, 1280, 26}; }));
    const int target = 1280 - 6 - 31 - 10;
    moveTo(target);
    EXPECT_TRUE(eventually([&] { return areaOf("two").midX() == target; })) << "under the pointer again";
    release();
    before_ = {"Toggle", "two", "one", "Divider", "three", "four"};
    expectBarOn(left.area);
}

TEST_F(ScreensSession, DragOnAMonitorThatVanishesIsPutBackByEscape) {
    setMonitors({right, left});
    startRevealed();
    drag("two", -40);
    remove(right);
    ASSERT_TRUE(eventually([&] { return x().area(bar()) == Area{0, 0, 1280, 26}; }));
    xdotool({"key", "Escape"});
    expectBarOn(left.area);
    release();
    expectBarOn(left.area);
}

TEST_F(ScreensSession, PanelGoesWithTheBar) {
    setMonitors({right, left});
    start({{"clickAction", "showPanel"}});
    openPanelWindow();
    ASSERT_TRUE(isInside(strip(), right.area));
    const int distance = right.area.x + right.area.width - strip().x;
    remove(right);
    EXPECT_TRUE(eventually(
        [&] { return panelWindow() && isInside(strip(), left.area) && strip().y == barThickness + 6; }));
    EXPECT_EQ(left.area.x + left.area.width - strip().x, distance) << "below the same item";
    setMonitors({below, left});
    EXPECT_TRUE(eventually(
        [&] { return isInside(strip(), below.area) && strip().y == below.area.y + barThickness + 6; }));
    // It still works: its first entry is the icon that is farthest left.
    const auto place = strip();
    xdotool({"mousemove", std::to_string(place.x + 20), std::to_string(place.midY()), "click", "1"});
    EXPECT_TRUE(eventually([&] { return !panelWindow() && !dividerIsExpanded(); }));
    EXPECT_TRUE(eventually([&] { return areLaidOut(below.area); }));
}

TEST_F(ScreensSession, CalendarGoesWithTheBar) {
    setMonitors({right, left});
    writeDefaults(clockDefaults());
    startVelmo();
    ASSERT_TRUE(eventually([&] { return areaOf("Clock").width > 20; }));
    click(*x().windowTitled("Velmo.Clock"));
    ASSERT_TRUE(eventually([&] { return shown("Velmo.Popover").has_value(); }));
    const auto place = [&] { return x().area(*shown("Velmo.Popover")).value_or(Area{}); };
    ASSERT_TRUE(eventually([&] { return isInside(place(), right.area) && place().width > 100; }));
    const auto former = place();
    remove(right);
    const Area expected = {former.x - 1280, former.y, former.width, former.height};
    EXPECT_TRUE(eventually([&] { return place() == expected; })) << place().x << ", " << place().y;
    // It is looked at anew each second.
    EXPECT_TRUE(stays([&] { return place() == expected; }, milliseconds(1300)));
    EXPECT_EQ(x().inputFocus(), *shown("Velmo.Popover"));
    xdotool({"key", "Escape"});
    EXPECT_TRUE(eventually([&] { return !shown("Velmo.Popover"); }));
}

TEST_F(ScreensSession, MenuOnAMonitorThatVanishesCloses) {
    setMonitors({right, left});
    startRevealed();
    click(toggle(), rightButton);
    ASSERT_TRUE(eventually([&] { return menuIsOpen(); }));
    remove(right);
    EXPECT_TRUE(eventually([&] { return !menuIsOpen(); }));
    expectBarOn(left.area);
    EXPECT_EQ(x().buttonState(), 0);
    click(toggle());
    EXPECT_TRUE(eventually([&] { return dividerIsExpanded(); })) << "presses are the bar's again";
}

}  // namespace

}  // namespace velmo::desktop
