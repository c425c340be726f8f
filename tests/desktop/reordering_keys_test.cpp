#include "built_files.h"
#include "reordering_session.h"

#include <xcb/xtest.h>

#include <algorithm>
#include <cstdlib>

namespace velmo::desktop {

namespace {

constexpr std::uint16_t superModifier = XCB_MOD_MASK_4;
constexpr xcb_keycode_t escapeCode = 9;
constexpr xcb_keycode_t superCode = 133;

class ReorderingKeys : public ReorderingSession {
protected:
    /// And releases a key by its place.
    void press(int keycode) const {
        for (const auto type : {XCB_KEY_PRESS, XCB_KEY_RELEASE})
            xcb_test_fake_input(x().raw(), type, static_cast<std::uint8_t>(keycode), XCB_CURRENT_TIME,
                                XCB_WINDOW_NONE, 0, 0, 0);
        ASSERT_TRUE(x().exists(bar()));
    }
    /// The keys that windows and grabs of the test's own have got since this was asked last, by their places.
    std::vector<int> keysGot() const {
        std::vector<int> got;
        x().exists(x().root());
        while (auto* event = xcb_poll_for_event(x().raw())) {
            if ((event->response_type & 0x7f) == XCB_KEY_PRESS)
                got.push_back(reinterpret_cast<const xcb_key_press_event_t*>(event)->detail);
            std::free(event);
        }
        return got;
    }
    /// As another program that keeps it to itself. False where somebody else does.
    bool takesKeyboard() const {
        const auto cookie = xcb_grab_keyboard(x().raw(), 0, x().root(), XCB_CURRENT_TIME, XCB_GRAB_MODE_ASYNC,
                                              XCB_GRAB_MODE_ASYNC);
        auto* const reply = xcb_grab_keyboard_reply(x().raw(), cookie, nullptr);
        const bool isTaken = reply && reply->status == XCB_GRAB_STATUS_SUCCESS;
        std::free(reply);
        return isTaken;
    }
    void giveKeyboardBack() const {
        xcb_ungrab_keyboard(x().raw(), XCB_CURRENT_TIME);
        ASSERT_TRUE(x().exists(bar()));
    }
    void expectEscapeToEndTheDrag() {
        EXPECT_TRUE(eventually([&] { return !keyboardIsFree(); })) << "it is taken for the drag";
        xdotool({"key", "Escape"});
        expectStaysAsBefore();
        release();
    }
    bool keyboardIsFree() const {
        const bool isFree = takesKeyboard();
        if (isFree)
            giveKeyboardBack();
        return isFree;
    }
    /// All that it types, in any layout and with any modifier.
    std::vector<xcb_keysym_t> symbolsOf(int key) const {
        auto* const reply = xcb_get_keyboard_mapping_reply(
            x().raw(), xcb_get_keyboard_mapping(x().raw(), static_cast<xcb_keycode_t>(key), 1), nullptr);
        const auto* symbols = xcb_get_keyboard_mapping_keysyms(reply);
        std::vector<xcb_keysym_t> found(symbols, symbols + reply->keysyms_per_keycode);
        std::free(reply);
        std::erase(found, XCB_NO_SYMBOL);
        return found;
    }
};

TEST_F(ReorderingKeys, EscapePutsTheItemBackWhoeverHasTheKeyboard) {
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

TEST_F(ReorderingKeys, EscapePutsTheItemBackWhereAnotherProgramHasAShortcutWithIt) {
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
TEST_F(ReorderingKeys, EscapeIsTheKeyThatTypesItWhereverThatIs) {
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

TEST_F(ReorderingKeys, EscapeThatIsHeldOnIsNobodyElsesUntilItIsReleased) {
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

TEST_F(ReorderingKeys, EscapeLeavesWhatIsOpenAndShownAlone) {
    startRevealed();
    outputOf({velmoProgram}, environment_);
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

TEST_F(ReorderingKeys, WorksWithoutEscapeWhereAnotherProgramKeepsTheKeyboard) {
    startRevealed();
    ASSERT_TRUE(takesKeyboard());
    drag("three", 45);
    release();
    EXPECT_TRUE(become({"Toggle", "one", "three", "two", "Divider", "four"}));
    EXPECT_GT(eventsGot(XCB_KEY_PRESS), 0) << "they keep it";
}

/// The hand may rest by the time at which a window manager lets go of it.
TEST_F(ReorderingKeys, EscapePutsTheItemBackOnceWhoeverKeptTheKeyboardHasLetGo) {
    startRevealed();
    ASSERT_TRUE(takesKeyboard());
    drag("three", 45);
    giveKeyboardBack();
    expectEscapeToEndTheDrag();
}

TEST_F(ReorderingKeys, EscapePutsTheItemBackOnceTheDragGoesOnThoughTheKeyboardWasKeptForLong) {
    startRevealed();
    ASSERT_TRUE(takesKeyboard());
    drag("three", 45);
    ASSERT_TRUE(comesToRest()) << "it asks for some seconds";
    giveKeyboardBack();
    EXPECT_TRUE(stays([&] { return keyboardIsFree(); }, moment)) << "it is no longer asked for";
    moveTo(areaOf("three").midX() + 3);
    expectEscapeToEndTheDrag();
}

TEST_F(ReorderingKeys, NobodyElseGetsAKeyOnTopOfSuper) {
    startRevealed();
    const auto window = makeWindow({100, 300, 200, 200}, 0x203040);
    giveKeyboardTo(window);
    keysGot();
    take("two");
    release();
    EXPECT_EQ(keysGot(), std::vector<int>{superCode}) << "for a press";
    drag("two", 36);
    release();
    EXPECT_TRUE(become({"Toggle", "two", "one", "Divider", "three", "four"}));
    EXPECT_EQ(keysGot(), std::vector<int>{superCode}) << "for a drag";
}

/// As window managers do that open a menu when Super comes and goes without another key.
TEST_F(ReorderingKeys, WhoeverKeepsSuperGetsAKeyWithoutMeaningAsSoonAsTheItemMoves) {
    startRevealed();
    outputOf({"setxkbmap", "-layout", "us,de"}, environment_);
    xcb_grab_key(x().raw(), 0, x().root(), XCB_MOD_MASK_ANY, superCode, XCB_GRAB_MODE_ASYNC,
                 XCB_GRAB_MODE_ASYNC);
    std::vector<int> used;
    for (int round = 0; round < 2; ++round) {
        keysGot();
        take("two");
        moveTo(areaOf("two").midX() - 2);
        EXPECT_TRUE(stays([&] { return areaOf("two") == before_[2].area; }, moment));
        EXPECT_EQ(keysGot(), std::vector<int>{superCode}) << "a press is none";
        for (const int by : {-10, -20, -30})
            moveTo(before_[2].area.midX() + by);
        ASSERT_TRUE(eventually([&] { return areaOf("two").x == before_[2].area.x - 30; }));
        const auto got = keysGot();
        ASSERT_EQ(got.size(), 1U) << testing::PrintToString(got);
        EXPECT_EQ(symbolsOf(got.front()), std::vector<xcb_keysym_t>{});
        EXPECT_EQ(std::count(used.begin(), used.end(), got.front()), 0);
        moveTo(before_[2].area.midX());
        release();
        expectStaysAsBefore();
        // From now on it types something.
        used.push_back(got.front());
        const xcb_keysym_t symbol = 'x';
        xcb_change_keyboard_mapping(x().raw(), 1, static_cast<xcb_keycode_t>(got.front()), 1, &symbol);
        ASSERT_TRUE(eventually([&] { return !symbolsOf(got.front()).empty(); }));
        ASSERT_TRUE(isAsBefore());
    }
}

TEST_F(ReorderingKeys, WhoeverKeepsSuperGetsAKeyWithoutMeaningAfterAClick) {
    startRevealed();
    const auto window = makeWindow({100, 300, 200, 200}, 0x203040);
    giveKeyboardTo(window);
    xcb_grab_key(x().raw(), 0, x().root(), XCB_MOD_MASK_ANY, superCode, XCB_GRAB_MODE_ASYNC,
                 XCB_GRAB_MODE_ASYNC);
    for (const auto* item : {"two", "Toggle"}) {
        keysGot();
        moveTo(areaOf(item).midX());
        xdotool({"keydown", "Super_L", "mousedown", "1"});
        EXPECT_TRUE(stays([&] { return isAsBefore(); }, moment));
        EXPECT_EQ(keysGot(), std::vector<int>{superCode});
        xdotool({"mouseup", "1"});
        std::vector<int> got;
        EXPECT_TRUE(eventually([&] {
            got = keysGot();
            return !got.empty();
        })) << item;
        ASSERT_EQ(got.size(), 1U) << testing::PrintToString(got);
        EXPECT_EQ(symbolsOf(got.front()), std::vector<xcb_keysym_t>{});
        xdotool({"keyup", "Super_L"});
        expectStaysAsBefore();
    }
    xdotool({"key", "a"});
    EXPECT_TRUE(eventually([&] { return eventsGot(XCB_KEY_PRESS) == 1; })) << "the keyboard is free";
}

TEST_F(ReorderingKeys, KeyboardIsNotTakenForAClickBesideTheItems) {
    startRevealed();
    const auto window = makeWindow({100, 300, 200, 200}, 0x203040);
    const std::uint32_t events = XCB_EVENT_MASK_FOCUS_CHANGE;
    xcb_change_window_attributes(x().raw(), window, XCB_CW_EVENT_MASK, &events);
    giveKeyboardTo(window);
    moveTo(farLeft);
    eventsGot(XCB_FOCUS_OUT);
    xdotool({"keydown", "Super_L", "click", "1", "keyup", "Super_L"});
    EXPECT_TRUE(stays([&] { return eventsGot(XCB_FOCUS_OUT) == 0; }, moment));
    moveTo(areaOf("two").midX());
    xdotool({"keydown", "Super_L", "click", "1", "keyup", "Super_L"});
    EXPECT_TRUE(eventually([&] { return eventsGot(XCB_FOCUS_OUT) == 1; })) << "where there is one, it is";
}

TEST_F(ReorderingKeys, KeyboardIsFreeOnceTheDraggedItemHasEnded) {
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

TEST_F(ReorderingKeys, KeyboardIsFreeAfterADropAndAfterAPressThatNeverMoved) {
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

TEST_F(ReorderingKeys, ItemPutBackAfterTheTimeIsUpIsHiddenInItsPlace) {
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

}  // namespace

}  // namespace velmo::desktop
