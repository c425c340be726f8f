#include "desktop_session.h"
#include "window_managers.h"

namespace velmo::desktop {

namespace {

/// Shift and Command with the key that is K on a US keyboard, as the settings store it.
const nlohmann::json toggleShortcut = {
    {"data", R"({"keyCode":40,"modifiers":1179648,"display":"\u21e7\u2318K"})"}};

class GlobalShortcut : public DesktopSession {
protected:
    void SetUp() override {
        DesktopSession::SetUp();
        startServer();
        writeDefaults({{"autoRehide", false}, {"hideOnClickOutside", false}, {"hotkey", toggleShortcut}});
    }

    /// Presses the shortcut's keys by their place on the keyboard; K is key 45 of an ordinary PC keyboard.
    void pressShortcut() const {
        xdotool({"keydown", "Super_L", "keydown", "Shift_L", "key", "45", "keyup", "Shift_L", "keyup",
                 "Super_L"});
    }

    void expectItToggles(const std::string& circumstances) {
        for (int count = 0; count < 2; ++count) {
            const bool before = dividerIsExpanded();
            pressShortcut();
            EXPECT_TRUE(eventually([&] { return dividerIsExpanded() != before; }, milliseconds(3000)))
                << circumstances;
        }
    }
};

/// A window manager's name and command.
class GlobalShortcutUnder : public GlobalShortcut, public testing::WithParamInterface<std::string> {
protected:
    void SetUp() override {
        GlobalShortcut::SetUp();
        startWindowManagerNamed(GetParam());
        startVelmo();
        const auto other = startOrdinaryWindow();
        xdotool({"windowactivate", "--sync", std::to_string(other)});
        ASSERT_TRUE(eventually([&] { return activeWindow() == other; }));
    }
};

TEST_P(GlobalShortcutUnder, TogglesWhileAnotherProgramHasTheFocusWhateverTheLocks) {
    // The ordinary keyboard gives this lock no modifier.
    outputOf({"xmodmap", "-e", "add mod3 = Scroll_Lock"}, environment_);
    constexpr std::uint16_t numLock = XCB_MOD_MASK_2;
    constexpr std::uint16_t scrollLock = XCB_MOD_MASK_3;
    expectItToggles("no lock");
    const std::vector<std::pair<std::string, std::uint16_t>> presses = {
        {"Caps_Lock", XCB_MOD_MASK_LOCK},
        {"Num_Lock", XCB_MOD_MASK_LOCK | numLock},
        {"Caps_Lock", numLock},
        {"Scroll_Lock", numLock | scrollLock},
        {"Num_Lock", scrollLock},
        {"Caps_Lock", XCB_MOD_MASK_LOCK | scrollLock},
        {"Num_Lock", XCB_MOD_MASK_LOCK | numLock | scrollLock},
    };
    for (const auto& [key, locks] : presses) {
        xdotool({"key", key});
        ASSERT_TRUE(eventually([&] { return x().modifierState() == locks; })) << key << x().modifierState();
        expectItToggles("locks " + std::to_string(locks));
    }
}

TEST_P(GlobalShortcutUnder, WorksWithEveryKeyboardLayout) {
    for (const std::string layout : {"fr", "de", "us", "fr"}) {
        outputOf({"setxkbmap", layout}, environment_);
        ASSERT_NE(outputOf({"setxkbmap", "-query"}, environment_).find(layout), std::string::npos);
        expectItToggles(layout);
    }
}

INSTANTIATE_TEST_SUITE_P(WindowManagers, GlobalShortcutUnder, windowManagers,
                         [](const auto& manager) { return manager.param; });

TEST_F(GlobalShortcut, FollowsKeysAndModifiersThatMove) {
    // Home has another number on this keyboard.
    const std::string home = R"({"keyCode":115,"modifiers":1048576,"display":"\u2318\u2196"})";
    writeDefaults({{"autoRehide", false}, {"hotkey", {{"data", home}}}});
    startVelmo();
    const auto press = [&](const std::string& key) {
        xdotool({"keydown", "Super_L", "key", key, "keyup", "Super_L"});
    };
    press("110");
    ASSERT_TRUE(eventually([&] { return !dividerIsExpanded(); }));
    outputOf({"setxkbmap", "-keycodes", "xfree86"}, environment_);
    EXPECT_TRUE(eventually([&] {
        const bool before = dividerIsExpanded();
        press("97");
        return eventually([&] { return dividerIsExpanded() != before; }, milliseconds(300));
    })) << "where the key is now";
    const bool before = dividerIsExpanded();
    press("110");
    EXPECT_TRUE(stays([&] { return dividerIsExpanded() == before; }, milliseconds(300))) << "where it was";
}

TEST_F(GlobalShortcut, SecondKeyDuringAPressDoesNotSwallowALaterOne) {
    startVelmo();
    xdotool({"keydown", "Super_L", "keydown", "Shift_L", "keydown", "45", "keydown", "33", "keyup", "45",
             "keyup", "33", "keyup", "Shift_L", "keyup", "Super_L"});
    ASSERT_TRUE(eventually([&] { return !dividerIsExpanded(); }));
    pressShortcut();
    EXPECT_TRUE(eventually([&] { return dividerIsExpanded(); }));
}

TEST_F(GlobalShortcut, IsReportedOnceHoweverLongItIsHeld) {
    startVelmo();
    outputOf({"xset", "r", "rate", "150", "50"}, environment_);
    xdotool({"keydown", "Super_L", "keydown", "Shift_L", "keydown", "45"});
    ASSERT_TRUE(eventually([&] { return !dividerIsExpanded(); }));
    EXPECT_TRUE(stays([&] { return !dividerIsExpanded(); }, milliseconds(700)));
    xdotool({"keyup", "45", "keyup", "Shift_L", "keyup", "Super_L"});
    EXPECT_TRUE(stays([&] { return !dividerIsExpanded(); }, milliseconds(300)));
    pressShortcut();
    EXPECT_TRUE(eventually([&] { return dividerIsExpanded(); }));
}

TEST_F(GlobalShortcut, KeyThatAnotherProgramHoldsStaysTheirs) {
    const std::uint16_t modifiers = XCB_MOD_MASK_4 | XCB_MOD_MASK_SHIFT;
    xcb_grab_key(x().raw(), 0, x().root(), modifiers, 45, XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC);
    x().area(x().root());
    startVelmo();
    pressShortcut();
    EXPECT_TRUE(stays([&] { return dividerIsExpanded(); }, milliseconds(500)));
    bool pressReached = false;
    while (auto* event = xcb_poll_for_event(x().raw())) {
        pressReached = pressReached || (event->response_type & 0x7f) == XCB_KEY_PRESS;
        free(event);
    }
    EXPECT_TRUE(pressReached);
    click(toggle());
    EXPECT_TRUE(eventually([&] { return !dividerIsExpanded(); })) << "everything else works";
}

/// A stored shortcut, and what is pressed for it: modifiers by name, the key by its number on a PC keyboard.
struct KeyPress {
    int keyCode;
    int modifiers;
    std::vector<std::string> held;
    std::string key;
};

TEST_F(GlobalShortcut, WorksWithKeysOfEveryKind) {
    constexpr int control = 0x40000;
    constexpr int option = 0x80000;
    constexpr int command = 0x100000;
    const std::vector<KeyPress> keys = {
        {96, 0, {}, "71"},                                     // F5, bare
        {0, command, {"Super_L"}, "38"},                       // A
        {10, control, {"Control_L"}, "94"},                    // the additional key of ISO keyboards
        {49, control | option, {"Control_L", "Alt_L"}, "65"},  // space
        {87, option, {"Alt_L"}, "84"},                         // 5 on the keypad
        {123, command | option, {"Super_L", "Alt_L"}, "113"},  // left arrow
        {50, command, {"Super_L"}, "49"},                      // the key left of 1
    };
    for (const auto& [keyCode, modifiers, held, key] : keys) {
        const nlohmann::json binding = {{"keyCode", keyCode}, {"modifiers", modifiers}, {"display", "?"}};
        writeDefaults({{"autoRehide", false}, {"hotkey", {{"data", binding.dump()}}}});
        startVelmo();
        std::vector<std::string> press;
        for (const auto& modifier : held)
            press.insert(press.end(), {"keydown", modifier});
        press.insert(press.end(), {"key", key});
        for (const auto& modifier : held)
            press.insert(press.end(), {"keyup", modifier});
        xdotool(press);
        EXPECT_TRUE(eventually([&] { return !dividerIsExpanded(); }, milliseconds(3000))) << keyCode;
        stopVelmo();
    }
}

TEST_F(GlobalShortcut, OtherModifiersAreOtherShortcuts) {
    startVelmo();
    xdotool({"keydown", "Super_L", "key", "45", "keyup", "Super_L"});
    xdotool({"keydown", "Shift_L", "key", "45", "keyup", "Shift_L"});
    xdotool({"keydown", "Super_L", "keydown", "Shift_L", "keydown", "Control_L", "key", "45", "keyup",
             "Control_L", "keyup", "Shift_L", "keyup", "Super_L"});
    EXPECT_TRUE(stays([&] { return dividerIsExpanded(); }, milliseconds(400)));
    expectItToggles("exactly the shortcut");
}

}  // namespace

}  // namespace velmo::desktop
