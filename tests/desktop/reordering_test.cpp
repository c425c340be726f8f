#include "icons_session.h"

#include <xcb/xtest.h>

#include <algorithm>
#include <cstdlib>

namespace velmo::desktop {

namespace {

constexpr std::uint16_t superModifier = XCB_MOD_MASK_4;
constexpr xcb_keycode_t escapeCode = 9;

/// Two icons that are shown, between the toggle and the divider, and two left of it, which are revealed.
class Reordering : public IconsSession {
protected:
    void SetUp() override {
        IconsSession::SetUp();
        startServer();
    }

    void start(nlohmann::json defaults = {{"autoRehide", false}}) {
        startWindowManager();
        writeDefaults(defaults);
        startVelmo();
        dockIcons({"one", "two", "three", "four"});
        hideIcon("four");
        hideIcon("three");
        movePointer(farLeft, 400);
    }
    void startRevealed(const nlohmann::json& defaults = {{"autoRehide", false}}) {
        start(defaults);
        reveal(revealed);
        before_ = items();
    }
    void reveal(const Names& expected) const {
        click(toggle());
        ASSERT_TRUE(eventually([&] { return !dividerIsExpanded(); }));
        ASSERT_EQ(names(), expected);
        // Away from the toggle, whose tooltip would follow. Nothing is hidden while the pointer is in the
        // bar.
        movePointer(farLeft, barMiddle);
    }
    /// And releases a key by its place.
    void press(int keycode) const {
        for (const auto type : {XCB_KEY_PRESS, XCB_KEY_RELEASE})
            xcb_test_fake_input(x().raw(), type, static_cast<std::uint8_t>(keycode), XCB_CURRENT_TIME,
                                XCB_WINDOW_NONE, 0, 0, 0);
        ASSERT_TRUE(x().exists(bar()));
    }
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
    bool isAsBefore() const { return items() == before_; }
    void expectStaysAsBefore() const {
        EXPECT_TRUE(eventually([&] { return isAsBefore(); })) << testing::PrintToString(names());
        EXPECT_TRUE(stays([&] { return isAsBefore(); }, moment)) << testing::PrintToString(names());
    }
    bool become(const Names& expected) const {
        return eventually([&] { return names() == expected && areLaidOut(screen); });
    }
    const Names revealed = {"Toggle", "one", "two", "Divider", "three", "four"};
    const std::vector<std::string> written = {"Velmo.Toggle",  "one.Icon",   "two.Icon",
                                              "Velmo.Divider", "three.Icon", "four.Icon"};
    const Area screen = {0, 0, 1280, 720};
    std::vector<Placed> before_;
};

TEST_F(Reordering, EscapePutsTheItemBackWhoeverHasTheKeyboard) {
    startRevealed();
    const auto window = makeWindow({100, 300, 200, 200}, 0x203040);
    giveKeyboardTo(window);
    drag("three", 40);
    ASSERT_TRUE(eventually([&] { return areaOf("two") != before_[2].area; })) << "neighbours make room";
    eventsGot(XCB_KEY_PRESS);
    xdotool({"key", "Escape"});
    expectStaysAsBefore();
    moveTo(farLeft);
    expectStaysAsBefore();
    EXPECT_EQ(eventsGot(XCB_KEY_PRESS), 0) << "nobody else has seen it";
    release();
    expectStaysAsBefore();
    EXPECT_EQ(savedOrder(), written);
    xdotool({"key", "a"});
    EXPECT_TRUE(eventually([&] { return eventsGot(XCB_KEY_PRESS) == 1; })) << "the keyboard is free again";
}

TEST_F(Reordering, EscapePutsTheItemBackWhereAnotherProgramHasAShortcutWithIt) {
    startRevealed();
    const auto window = makeWindow({100, 300, 200, 200}, 0x203040);
    xcb_grab_key(x().raw(), 0, x().root(), superModifier, escapeCode, XCB_GRAB_MODE_ASYNC,
                 XCB_GRAB_MODE_ASYNC);
    ASSERT_TRUE(x().exists(window));
    drag("one", -60);
    eventsGot(XCB_KEY_PRESS);
    xdotool({"key", "Escape"});
    expectStaysAsBefore();
    EXPECT_EQ(eventsGot(XCB_KEY_PRESS), 0);
    release();
    xdotool({"key", "super+Escape"});
    EXPECT_TRUE(eventually([&] { return eventsGot(XCB_KEY_PRESS) == 1; })) << "theirs again";
}

/// Which keys are Escape is the user's choice.
TEST_F(Reordering, EscapeIsTheKeyThatTypesItWhereverThatIs) {
    constexpr int capsLockCode = 66;
    start({{"autoRehide", false}, {"clickAction", "showPanel"}});
    const auto setOptions = [&](const std::string& option) {
        const std::vector<std::string> command = {"setxkbmap", "-option", "", "-option", option};
        outputOf(command, environment_);
    };
    setOptions("caps:swapescape");
    const auto before = items();
    drag("two", 36);
    press(escapeCode);
    EXPECT_TRUE(stays([&] { return items() != before; }, moment)) << "the other key locks";
    press(escapeCode);
    press(capsLockCode);
    EXPECT_TRUE(eventually([&] { return items() == before; })) << testing::PrintToString(names());
    release();
    openPanelWindow();
    press(capsLockCode);
    EXPECT_TRUE(eventually([&] { return !panelWindow(); }));
    setOptions("caps:escape");
    for (const int key : {int(escapeCode), capsLockCode}) {
        openPanelWindow();
        press(key);
        EXPECT_TRUE(eventually([&] { return !panelWindow(); })) << key;
        drag("two", 36);
        press(key);
        EXPECT_TRUE(eventually([&] { return items() == before; })) << key;
        release();
    }
}

TEST_F(Reordering, EscapeThatIsHeldOnIsNobodyElsesUntilItIsReleased) {
    startRevealed();
    const auto window = makeWindow({100, 300, 200, 200}, 0x203040);
    giveKeyboardTo(window);
    drag("two", -50);
    xdotool({"keyup", "Super_L"});
    eventsGot(XCB_KEY_PRESS);
    xdotool({"keydown", "Escape"});
    expectStaysAsBefore();
    xdotool({"mouseup", "1"});
    // Longer than it takes a key to repeat.
    EXPECT_TRUE(stays([&] { return eventsGot(XCB_KEY_PRESS) == 0; }, milliseconds(1000)));
    xdotool({"keyup", "Escape"});
    EXPECT_TRUE(stays([&] { return eventsGot(XCB_KEY_RELEASE) == 0; }, moment));
    xdotool({"key", "Escape"});
    EXPECT_TRUE(eventually([&] { return eventsGot(XCB_KEY_PRESS) == 1; }));
    EXPECT_EQ(savedOrder(), written);
}

TEST_F(Reordering, EscapeLeavesWhatIsOpenAndShownAlone) {
    startRevealed();
    outputOf({VELMO_PROGRAM}, environment_);
    ASSERT_TRUE(eventually([&] { return shown("Velmo Settings").has_value(); }));
    drag("two", 36);
    xdotool({"key", "Escape"});
    expectStaysAsBefore();
    release();
    EXPECT_TRUE(stays([&] { return shown("Velmo Settings") && !dividerIsExpanded(); }, moment));
    drag("two", 36);
    release();
    EXPECT_TRUE(become({"Toggle", "two", "one", "Divider", "three", "four"})) << "the next drag is one";
}

TEST_F(Reordering, WorksWithoutEscapeWhereAnotherProgramKeepsTheKeyboard) {
    startRevealed();
    const auto cookie = xcb_grab_keyboard(x().raw(), 0, x().root(), XCB_CURRENT_TIME, XCB_GRAB_MODE_ASYNC,
                                          XCB_GRAB_MODE_ASYNC);
    auto* const reply = xcb_grab_keyboard_reply(x().raw(), cookie, nullptr);
    ASSERT_TRUE(reply && reply->status == XCB_GRAB_STATUS_SUCCESS);
    std::free(reply);
    drag("three", 45);
    release();
    EXPECT_TRUE(become({"Toggle", "one", "three", "two", "Divider", "four"}));
    EXPECT_GT(eventsGot(XCB_KEY_PRESS), 0) << "they keep it";
}

TEST_F(Reordering, KeyboardIsFreeOnceTheDraggedItemHasEnded) {
    startRevealed();
    const auto window = makeWindow({100, 300, 200, 200}, 0x203040);
    giveKeyboardTo(window);
    drag("two", -50);
    endIcon("two");
    ASSERT_TRUE(eventually([&] { return names().size() == revealed.size() - 1; }));
    eventsGot(XCB_KEY_PRESS);
    xdotool({"key", "a"});
    EXPECT_TRUE(eventually([&] { return eventsGot(XCB_KEY_PRESS) == 1; })) << "while the button is held";
    moveTo(farLeft);
    release();
    dockIcon("two");
    EXPECT_TRUE(become(revealed)) << "back in its place";
}

TEST_F(Reordering, KeyboardIsFreeAfterADropAndAfterAPressThatNeverMoved) {
    startRevealed();
    const auto window = makeWindow({100, 300, 200, 200}, 0x203040);
    giveKeyboardTo(window);
    take("two");
    eventsGot(XCB_KEY_PRESS);
    xdotool({"key", "a"});
    EXPECT_TRUE(eventually([&] { return eventsGot(XCB_KEY_PRESS) == 1; })) << "nothing is dragged yet";
    release();
    drag("two", -50);
    release();
    ASSERT_TRUE(become({"Toggle", "one", "Divider", "three", "two", "four"}));
    eventsGot(XCB_KEY_PRESS);
    xdotool({"key", "a"});
    EXPECT_TRUE(eventually([&] { return eventsGot(XCB_KEY_PRESS) == 1; }));
}

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

TEST_F(Reordering, ItemPutBackAfterTheTimeIsUpIsHiddenInItsPlace) {
    startRevealed({{"rehideDelay", 1.0}});
    drag("four", 10);
    moveTo(1000, 300);
    EXPECT_TRUE(stays([&] { return !dividerIsExpanded(); }, milliseconds(2500)));
    xdotool({"key", "Escape"});
    EXPECT_TRUE(eventually([&] { return dividerIsExpanded() && isHidden(icon("four")); }));
    EXPECT_EQ(names(), revealed);
    release();
    EXPECT_EQ(savedOrder(), written);
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
    start({{"autoRehide", false},
           {"clockEnabled", true},
           {"clockFormat", "HH:mm"},
           {"statusItemOrder", {"Velmo.Toggle", "Velmo.Clock", "Velmo.Divider"}}});
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
