#include "reordering_session.h"

#include <algorithm>

namespace velmo::desktop {

namespace {

class Reordering : public ReorderingSession {
protected:
    /// How many windows of the bar lie below the item's.
    std::ptrdiff_t windowsBelow(const std::string& name) const {
        const auto windows = x().children(bar());
        return std::find(windows.begin(), windows.end(), itemNamed(name)) - windows.begin();
    }
    /// The bar's window for it.
    xcb_window_t itemNamed(const std::string& name) const {
        const auto place = areaOf(name);
        for (const auto window : x().children(bar())) {
            if (x().area(window) == place)
                return window;
        }
        return XCB_WINDOW_NONE;
    }
};

TEST_F(Reordering, PressThatDoesNotMoveChangesNothing) {
    startRevealed();
    take("Toggle");
    moveTo(areaOf("Toggle").midX() + 2);
    release();
    expectStaysAsBefore();
    EXPECT_FALSE(dividerIsExpanded()) << "no click either";
    EXPECT_EQ(savedOrder(), written);
}

TEST_F(Reordering, ReleasedBelowTheBarTheItemIsDroppedWhereItIsSeen) {
    startRevealed();
    drag("four", 40);
    moveTo(areaOf("four").midX() + 5, 500);
    const Names expected = {"Toggle", "one", "two", "four", "Divider", "three"};
    ASSERT_TRUE(eventually([&] { return names() == expected; }));
    release();
    EXPECT_TRUE(become(expected));
    click(toggle());
    ASSERT_TRUE(eventually([&] { return dividerIsExpanded(); }));
    EXPECT_TRUE(isOnScreen(icon("four")));
}

TEST_F(Reordering, OnEitherSideOfTheDividerTheItemBelongsWhereItIsSeen) {
    startRevealed();
    // One pixel to the next until the divider makes room.
    const auto start = areaOf("two");
    const int dividerBefore = areaOf("Divider").x;
    take("two");
    int at = start.midX() - 4;
    moveTo(at);
    ASSERT_TRUE(eventually([&] { return areaOf("two").x == start.x - 4; }));
    const auto step = [&] {
        moveTo(--at);
        ASSERT_TRUE(eventually([&] { return areaOf("two").midX() == at; }));
    };
    while (areaOf("Divider").x == dividerBefore && at > start.midX() - 100)
        step();
    ASSERT_GT(areaOf("Divider").x, dividerBefore) << "to the right of the item";
    moveTo(at + 1);
    ASSERT_TRUE(eventually([&] { return areaOf("Divider").x == dividerBefore; }));
    release();
    ASSERT_TRUE(become(revealed)) << "one pixel before";
    EXPECT_EQ(savedOrder(), written);

    drag("two", at - start.midX());
    release();
    ASSERT_TRUE(become({"Toggle", "one", "Divider", "two", "three", "four"})) << "and there";
    click(toggle());
    EXPECT_TRUE(eventually([&] { return dividerIsExpanded() && isHidden(icon("two")); }));
    EXPECT_TRUE(isOnScreen(icon("one")));
}

TEST_F(Reordering, DividerThatIsDraggedDividesAnew) {
    startRevealed();
    drag("Divider", -30);
    release();
    ASSERT_TRUE(become({"Toggle", "one", "two", "three", "Divider", "four"}));
    click(toggle());
    EXPECT_TRUE(eventually([&] { return dividerIsExpanded() && isHidden(icon("four")); }));
    EXPECT_TRUE(isOnScreen(icon("three")));
}

TEST_F(Reordering, DividerThatIsPutBackOnItsSideAsItComesIsWrittenDown) {
    startWindowManager();
    writeDefaults({{"autoRehide", false},
                   {"alwaysHiddenEnabled", true},
                   {"statusItemOrder", {"Velmo.Toggle", "Velmo.AlwaysHiddenDivider", "Velmo.Divider"}}});
    startVelmo();
    EXPECT_TRUE(eventually([&] {
        return savedOrder() ==
               std::vector<std::string>{"Velmo.Toggle", "Velmo.Divider", "Velmo.AlwaysHiddenDivider"};
    })) << testing::PrintToString(savedOrder());
}

/// Above the others while it moves, below ours afterwards, where it costs clicks on those no time.
TEST_F(Reordering, IconIsAboveOthersOnlyWhileItIsDragged) {
    startRevealed();
    const auto ours = [&] { return std::min({windowsBelow("Toggle"), windowsBelow("Divider")}); };
    EXPECT_LT(windowsBelow("one"), ours());
    drag("one", -10);
    EXPECT_TRUE(eventually(
        [&] { return windowsBelow("one") > std::max(windowsBelow("Toggle"), windowsBelow("two")); }));
    release();
    EXPECT_TRUE(eventually([&] { return isAsBefore(); }));
    EXPECT_LT(windowsBelow("one"), ours());
    drag("one", -60);
    xdotool({"key", "Escape"});
    EXPECT_TRUE(eventually([&] { return isAsBefore(); }));
    EXPECT_LT(windowsBelow("one"), ours());
    release();
}

TEST_F(Reordering, GoesToTheLastPlaceBeyondEitherEnd) {
    startRevealed();
    drag("two", 20);
    moveTo(1279);
    ASSERT_TRUE(eventually([&] { return areaOf("two").x + areaOf("two").width > 1274; })) << "still follows";
    release();
    EXPECT_TRUE(become({"two", "Toggle", "one", "Divider", "three", "four"}));
    drag("two", -20);
    moveTo(0);
    ASSERT_TRUE(eventually([&] { return areaOf("two").x < 0; }));
    release();
    EXPECT_TRUE(become({"Toggle", "one", "Divider", "three", "four", "two"}));
}

TEST_F(Reordering, HiddenSectionStaysAwayWhileAnItemIsDraggedIntoIt) {
    start();
    ASSERT_TRUE(dividerIsExpanded());
    const auto one = areaOf("one");
    drag("two", -30);
    EXPECT_TRUE(isHidden(icon("three")) && isHidden(icon("four")));
    moveTo(400);
    ASSERT_TRUE(eventually([&] { return areaOf("two").midX() == 400; }));
    EXPECT_EQ(areaOf("one"), one);
    xdotool({"key", "Escape"});
    ASSERT_TRUE(eventually([&] { return areaOf("two").x + areaOf("two").width == one.x; })) << "put back";
    release();
    drag("two", -30);
    moveTo(400);
    release();
    ASSERT_TRUE(eventually([&] { return isHidden(icon("two")); }));
    reveal({"Toggle", "one", "Divider", "two", "three", "four"});
}

TEST_F(Reordering, ToggleDraggedWhileIconsAreHiddenStaysInSight) {
    start();
    drag("Toggle", -40);
    moveTo(0);
    release();
    ASSERT_TRUE(
        eventually([&] { return names() == Names{"one", "two", "Toggle", "Divider", "three", "four"}; }));
    EXPECT_TRUE(isOnScreen(toggle()));
    EXPECT_TRUE(dividerIsExpanded());
}

TEST_F(Reordering, SecondButtonChangesNothingOfADrag) {
    startRevealed();
    drag("two", 20);
    xdotool({"mousedown", "3"});
    moveTo(areaOf("one").midX() + 12);
    xdotool({"mouseup", "3"});
    moveTo(before_[1].area.midX() + 4);
    ASSERT_TRUE(eventually([&] { return areaOf("two").midX() == before_[1].area.midX() + 4; })) << "goes on";
    release();
    ASSERT_TRUE(become({"Toggle", "two", "one", "Divider", "three", "four"}));
    EXPECT_FALSE(dividerIsExpanded());
}

TEST_F(Reordering, PressWithoutSuperTakesNothingWhileAnotherButtonIsHeld) {
    startRevealed();
    drag("two", 36);
    xdotool({"mousedown", "3", "mouseup", "1", "keyup", "Super_L"});
    ASSERT_TRUE(become({"Toggle", "two", "one", "Divider", "three", "four"}))
        << "dropped with its own button";
    before_ = items();
    moveTo(areaOf("one").midX());
    xdotool({"mousedown", "1"});
    moveTo(farLeft);
    expectStaysAsBefore();
    xdotool({"mouseup", "1", "mouseup", "3"});
    expectStaysAsBefore();
}

TEST_F(Reordering, NothingIsHiddenWhileAnItemIsHeld) {
    startRevealed({{"rehideDelay", 1.0}});
    // The pointer is out of the bar, so that the time is up in the middle of the drag.
    drag("four", 10);
    moveTo(areaOf("four").midX() + 20, 300);
    ASSERT_TRUE(eventually([&] { return areaOf("four").x > areaOf("three").x; }));
    const auto during = items();
    EXPECT_TRUE(stays([&] { return items() == during; }, milliseconds(2500)));
    release();
    EXPECT_TRUE(eventually([&] { return dividerIsExpanded(); })) << "hidden as soon as it is dropped";
    EXPECT_EQ(names(), (Names{"Toggle", "one", "two", "Divider", "four", "three"}));
    EXPECT_TRUE(isHidden(icon("three")) && isHidden(icon("four")));
}

TEST_F(Reordering, DragClosesThePanel) {
    startWindowManager();
    startVelmoForPanels({{"autoRehide", false}});
    dockIcons({"one", "two"});
    openPanelWindow();
    drag("two", 36);
    EXPECT_TRUE(eventually([&] { return !panelWindow(); }));
    xdotool({"key", "Escape"});
    EXPECT_TRUE(become({"Toggle", "one", "two", "Divider"}));
    release();
    EXPECT_FALSE(panelWindow());
    drag("two", 36);
    release();
    EXPECT_TRUE(eventually([&] { return names() == Names{"Toggle", "two", "one", "Divider"}; }));
}

TEST_F(Reordering, PressWhileAMenuIsOpenClosesItAndTheNextOneDrags) {
    startRevealed();
    click(toggle(), rightButton);
    ASSERT_TRUE(eventually([&] { return menuIsOpen(); }));
    movePointer(areaOf("two").midX(), barMiddle);
    take("two");
    EXPECT_TRUE(eventually([&] { return !menuIsOpen(); }));
    release();
    expectStaysAsBefore();
    drag("two", 36);
    release();
    EXPECT_TRUE(become({"Toggle", "two", "one", "Divider", "three", "four"}));
}

TEST_F(Reordering, IconThatComesDuringADragMakesRoomAndStays) {
    startRevealed();
    drag("one", -25);
    dockIcon("five");
    EXPECT_EQ(areaOf("one").x, before_[1].area.x - 25) << "still under the pointer";
    release();
    EXPECT_TRUE(become({"Toggle", "two", "one", "five", "Divider", "three", "four"}))
        << testing::PrintToString(names());
}

TEST_F(Reordering, ClockIsMovedAndPassedAsAnyOther) {
    auto defaults = clockDefaults();
    defaults["autoRehide"] = false;
    start(defaults);
    ASSERT_TRUE(eventually([&] { return areaOf("Clock").width > 20; }));
    ASSERT_EQ(names(), (Names{"Toggle", "Clock", "one", "two", "Divider", "three", "four"}));
    drag("one", areaOf("Clock").width);
    release();
    EXPECT_TRUE(eventually(
        [&] { return names() == Names{"Toggle", "one", "Clock", "two", "Divider", "three", "four"}; }));
    drag("Clock", areaOf("Toggle").midX() + 10 - areaOf("Clock").midX());
    release();
    EXPECT_TRUE(eventually(
        [&] { return names() == Names{"Clock", "Toggle", "one", "two", "Divider", "three", "four"}; }));
    EXPECT_FALSE(shown("Velmo.Popover")) << "no click either";
}

}  // namespace

}  // namespace velmo::desktop
