#include "own_events_session.h"

namespace velmo::desktop {

namespace {

constexpr std::uint32_t keyK = 40;

class OwnKeys : public OwnEventsSession {};

TEST_F(OwnKeys, EscapeIsThePanelsWhoeverHasTheKeyboard) {
    start();
    focus(makeToolkitWindow(false, {100, 200, 120, 60}));
    const auto panel = localEvents_.addPanel();
    const auto monitor = monitorKeys();
    type("Escape");
    ASSERT_EQ(seen_.size(), 1U);
    EXPECT_EQ(seen_[0].type, EventType::keyDown);
    EXPECT_EQ(seen_[0].keyCode, escapeKeyCode);
    EXPECT_EQ(seen_[0].charactersIgnoringModifiers, "\x1b");
    EXPECT_EQ(keysInWindow(), 0);
    type("Caps_Lock");
    type("Num_Lock");
    EXPECT_EQ(keysInWindow(), 2) << "other keys go where they always go";
    type("Escape");
    EXPECT_EQ(seen_.size(), 2U) << "whatever the locks";
    EXPECT_EQ(keysInWindow(), 0);
}

TEST_F(OwnKeys, EscapeIsThePanelsWhicheverModifiersAreHeld) {
    start();
    const auto panel = localEvents_.addPanel();
    const auto monitor = monitorKeys();
    for (const char* combination :
         {"shift+Escape", "ctrl+Escape", "alt+Escape", "super+Escape", "shift+ctrl+alt+super+Escape"}) {
        seen_.clear();
        type(combination);
        ASSERT_EQ(seen_.size(), 1U) << combination;
        EXPECT_EQ(seen_[0].keyCode, escapeKeyCode);
        EXPECT_NE(seen_[0].modifierFlags, 0U);
    }
    // Also those that have no part in shortcuts.
    focus(makeToolkitWindow(false, {100, 200, 120, 60}));
    for (const char* combination : {"ISO_Level3_Shift+Escape", "shift+super+ISO_Level3_Shift+Escape"}) {
        seen_.clear();
        xdotool({"key", combination});
        turnFor(milliseconds(40));
        ASSERT_EQ(seen_.size(), 1U) << combination;
        EXPECT_EQ(seen_[0].keyCode, escapeKeyCode);
    }
}

TEST_F(OwnKeys, EscapeOfAHotKeyThatComesWhileAPanelIsShownIsNotThePanelsAnyMore) {
    start();
    int pressed = 0;
    const auto handler = hotKeys_->installEventHandler(hotKeyPressed, [&](const HotKeyEvent*) {
        ++pressed;
        return 0;
    });
    const auto panel = localEvents_.addPanel();
    const auto monitor = monitorKeys();
    type("super+Escape");
    EXPECT_EQ(seen_.size(), 1U);
    const auto registered = hotKeys_->registerHotKey(escapeKeyCode, hot_key_modifier::command, {0, 1}, 0);
    ASSERT_TRUE(registered.hotKey);
    type("super+Escape");
    EXPECT_EQ(pressed, 1);
    EXPECT_EQ(seen_.size(), 1U) << "one press, one effect";
    type("Escape");
    EXPECT_EQ(seen_.size(), 2U);
}

TEST_F(OwnKeys, HotKeyWithEscapeStaysAHotKeyWhileAPanelIsShownAndAfterwards) {
    start();
    int pressed = 0;
    const auto handler = hotKeys_->installEventHandler(hotKeyPressed, [&](const HotKeyEvent*) {
        ++pressed;
        return 0;
    });
    const auto registered = hotKeys_->registerHotKey(escapeKeyCode, hot_key_modifier::command, {0, 1}, 0);
    ASSERT_TRUE(registered.hotKey);
    auto panel = std::make_unique<Registration>(localEvents_.addPanel());
    const auto monitor = monitorKeys();
    type("super+Escape");
    EXPECT_EQ(pressed, 1);
    EXPECT_TRUE(seen_.empty());
    panel.reset();
    type("super+Escape");
    EXPECT_EQ(pressed, 2);
}

TEST_F(OwnKeys, EscapeIsOthersWithoutAPanelOrAMonitor) {
    start();
    focus(makeToolkitWindow(false, {100, 200, 120, 60}));
    auto monitor = monitorKeys();
    type("Escape");
    EXPECT_EQ(keysInWindow(), 1) << "no panel";
    auto panel = std::make_unique<Registration>(localEvents_.addPanel());
    monitor.reset();
    type("Escape");
    EXPECT_EQ(keysInWindow(), 1) << "no monitor";
    monitor = events_->addLocalMonitor(presses, [](const Event&) { return EventDisposition::pass; });
    type("Escape");
    EXPECT_EQ(keysInWindow(), 1) << "none of keys";
    monitor = monitorKeys();
    type("Escape");
    EXPECT_EQ(keysInWindow(), 0);
    EXPECT_EQ(seen_.size(), 1U);
    panel.reset();
    type("Escape");
    EXPECT_EQ(keysInWindow(), 1) << "after the panel";
    EXPECT_EQ(seen_.size(), 1U);
}

TEST_F(OwnKeys, EscapeThatClosesThePanelIsHeardOnce) {
    start();
    focus(makeToolkitWindow(false, {100, 200, 120, 60}));
    auto panel = std::make_unique<Registration>(localEvents_.addPanel());
    std::unique_ptr<EventMonitor> monitor;
    monitor = events_->addLocalMonitor(keys, [&](const Event& event) {
        seen_.push_back(event);
        panel.reset();
        monitor.reset();
        return EventDisposition::swallow;
    });
    connection_->sync();
    xdotool({"keydown", "Escape"});
    // Long enough for it to repeat.
    turnFor(milliseconds(900));
    xdotool({"keyup", "Escape"});
    turnFor(milliseconds(20));
    EXPECT_EQ(seen_.size(), 1U);
    EXPECT_EQ(keysInWindow(), 0) << "the whole press was the panel's";
    type("Escape");
    EXPECT_EQ(keysInWindow(), 1);
}

TEST_F(OwnKeys, EscapeThatAnotherProgramHasStaysTheirs) {
    start();
    xcb_grab_key(x().raw(), 0, x().root(), XCB_MOD_MASK_ANY, *keyboard_->keycodeOf(escapeKeyCode),
                 XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC);
    x().exists(x().root());
    const auto panel = localEvents_.addPanel();
    const auto monitor = monitorKeys();
    type("Escape");
    EXPECT_TRUE(seen_.empty());
    EXPECT_EQ(keysInWindow(), 1);
}

TEST_F(OwnKeys, EscapeFollowsTheKeyboard) {
    start();
    focus(makeToolkitWindow(false, {100, 200, 120, 60}));
    const auto panel = localEvents_.addPanel();
    const auto monitor = monitorKeys();
    setLayout({"-layout", "us", "-option", "caps:none"});
    type("Escape");
    EXPECT_EQ(seen_.size(), 1U);
    EXPECT_EQ(keysInWindow(), 0);
}

TEST_F(OwnKeys, KeysTellTheirPlaceAndWhatTheyType) {
    start();
    setLayout({"-layout", "us,ru", "-variant", "intl,"});
    EXPECT_EQ(keyDown(keyK).keyCode, keyK);
    EXPECT_EQ(keyDown(keyK).type, EventType::keyDown);
    EXPECT_EQ(keyDown(keyK).charactersIgnoringModifiers, "k");
    EXPECT_EQ(keyDown(keyK, XCB_MOD_MASK_SHIFT).charactersIgnoringModifiers, "K");
    EXPECT_EQ(keyDown(keyK, XCB_MOD_MASK_LOCK).charactersIgnoringModifiers, "k");
    EXPECT_EQ(keyDown(keyK, XCB_MOD_MASK_CONTROL).charactersIgnoringModifiers, "k");
    constexpr std::uint32_t secondLayout = 1U << 13;
    EXPECT_EQ(keyDown(keyK, secondLayout).charactersIgnoringModifiers, "л");
    EXPECT_EQ(keyDown(keyK, secondLayout | XCB_MOD_MASK_SHIFT).charactersIgnoringModifiers, "Л");
    EXPECT_EQ(keyDown(escapeKeyCode).charactersIgnoringModifiers, "\x1b");
    EXPECT_EQ(keyDown(89).charactersIgnoringModifiers, "7") << "of the keypad";
    EXPECT_EQ(keyDown(50).charactersIgnoringModifiers, "") << "a dead key";
    EXPECT_EQ(keyDown(123).charactersIgnoringModifiers, std::nullopt) << "an arrow";
    EXPECT_EQ(keyDown(keyK, XCB_MOD_MASK_SHIFT | modifiers_->superMask()).modifierFlags,
              modifier::shift | modifier::command);
    for (const std::uint32_t strange : {50U, 0U, 256U, 5000U})
        EXPECT_FALSE(keyEvents_->keyDown(strange, 0)) << strange;
}

TEST_F(OwnKeys, HotKeysThatDoNotMoveAreLeftAlone) {
    start();
    x11::HotKeys hotKeys(*connection_, *keyboard_, *modifiers_);
    std::vector<std::unique_ptr<HotKey>> registered;
    std::vector<std::uint32_t> pressed;
    const auto handler = hotKeys.installEventHandler(hotKeyPressed, [&](const HotKeyEvent* event) {
        pressed.push_back(event->directObject->id);
        return 0;
    });
    using namespace hot_key_modifier;
    for (std::uint32_t code = 0; code < 9; ++code) {
        for (const std::uint32_t modifiers : {command, command | shift, command | control}) {
            auto result = hotKeys.registerHotKey(code, modifiers, {0, code}, 0);
            ASSERT_TRUE(result.hotKey) << code;
            registered.push_back(std::move(result.hotKey));
        }
    }
    auto moving = hotKeys.registerHotKey(keyK, option, {0, keyK}, 0);
    ASSERT_TRUE(moving.hotKey);
    const auto countedRequests = [&] { return xcb_no_operation(connection_->raw()).sequence; };
    connection_->sync();
    const auto before = countedRequests();
    // Alt goes from one modifier to another, Super stays.
    outputOf({"xmodmap", "-e", "remove mod1 = Alt_L Alt_R Meta_L", "-e", "add mod3 = Alt_L Alt_R"},
             environment_);
    ASSERT_TRUE(turnUntil([&] { return modifiers_->altMask() == XCB_MOD_MASK_3; }));
    EXPECT_LT(countedRequests() - before, registered.size() * modifiers_->lockCombinations().size())
        << "far fewer than all of them need";
    xdotool({"key", "alt+k"});
    xdotool({"key", "super+a"});
    EXPECT_TRUE(turnUntil([&] { return pressed.size() == 2; }));
    EXPECT_EQ(pressed, (std::vector<std::uint32_t>{keyK, 0}));
}

}  // namespace

}  // namespace velmo::desktop
