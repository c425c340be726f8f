#include "desktop_session.h"
#include "window_managers.h"

#include <algorithm>
#include <csignal>
#include <cstdlib>

namespace velmo::desktop {

namespace {

/// Shift and Command with the key that is K on a US keyboard, as the settings store it.
const nlohmann::json toggleShortcut = {
    {"data", R"({"keyCode":40,"modifiers":1179648,"display":"\u21e7\u2318K"})"}};
/// A spot of the screen far from the bar and from every window.
constexpr int elsewhereX = 900;
constexpr int elsewhereY = 600;

class ToggleMenu : public DesktopSession {
protected:
    void SetUp() override {
        DesktopSession::SetUp();
        startServer();
        startWindowManager();
    }

    std::optional<Area> menuArea() const {
        for (const auto window : x().children(x().root())) {
            const auto area = x().area(window);
            const bool isMenu = x().property(window, "WM_CLASS").starts_with("velmo") && window != bar() &&
                                area && area->height > 40;
            if (isMenu && x().isViewable(window))
                return area;
        }
        return std::nullopt;
    }

    void openMenuAt(xcb_window_t item) {
        click(item, 3);
        ASSERT_TRUE(eventually([&] { return menuArea().has_value(); }));
    }

    void clickEntry(int pixelsBelowTheTop) {
        const auto menu = *menuArea();
        movePointer(menu.x + 60, menu.y + pixelsBelowTheTop);
        EXPECT_TRUE(stays([&] { return menuArea().has_value(); }, milliseconds(150))) << "as slow as a hand";
        xdotool({"click", "1"});
        ASSERT_TRUE(eventually([&] { return !menuArea(); }));
    }
    static constexpr int firstEntry = 18;

    /// By keyboard: the entry with this number, counted from 1 without the separators.
    void chooseEntry(int number) {
        for (int count = 0; count < number; ++count)
            xdotool({"key", "Down"});
        xdotool({"key", "Return"});
        ASSERT_TRUE(eventually([&] { return !menuArea(); }));
    }
};

TEST_F(ToggleMenu, OpensJustUnderTheToggleAndOnTheScreen) {
    startVelmo();
    openMenuAt(toggle());
    const auto menu = *menuArea();
    EXPECT_EQ(menu.y, 26 + 4);
    EXPECT_LE(menu.x + menu.width, 1280);
    EXPECT_GT(menu.x + menu.width, x().area(toggle())->x);
    EXPECT_TRUE(dividerIsExpanded()) << "opening changes nothing";
}

TEST_F(ToggleMenu, EntryChosenByMouseShowsAndHides) {
    writeDefaults({{"autoRehide", false}});
    startVelmo();
    openMenuAt(toggle());
    clickEntry(firstEntry);
    EXPECT_TRUE(eventually([&] { return !dividerIsExpanded(); }));
    openMenuAt(toggle());
    clickEntry(firstEntry);
    EXPECT_TRUE(eventually([&] { return dividerIsExpanded(); }));
}

TEST_F(ToggleMenu, EntriesChosenByKeyboard) {
    writeDefaults({{"autoRehide", false}, {"alwaysHiddenEnabled", true}});
    startVelmo();
    openMenuAt(toggle());
    chooseEntry(1);
    ASSERT_TRUE(eventually([&] { return !dividerIsExpanded(); }));
    EXPECT_EQ(x().area(alwaysHiddenDivider())->width, 10000);
    openMenuAt(toggle());
    chooseEntry(2);
    ASSERT_TRUE(eventually([&] { return x().area(alwaysHiddenDivider())->width == 12; }));
    openMenuAt(toggle());
    chooseEntry(2);
    EXPECT_TRUE(eventually([&] { return dividerIsExpanded(); }));
}

TEST_F(ToggleMenu, EveryEntryCanBeChosenByMouse) {
    writeDefaults({{"autoRehide", false}, {"alwaysHiddenEnabled", true}});
    startVelmo();
    // Top to bottom: show, show always hidden, panel, settings, quit; separators lie before the last two.
    const auto middleOf = [&](int entry) {
        constexpr int entryCount = 5;
        constexpr int padding = 6;
        constexpr int separator = 11;
        const int height = (menuArea()->height - 2 * padding - 2 * separator) / entryCount;
        const int separators = std::max(entry - 2, 0) * separator;
        return padding + height * entry + height / 2 + separators;
    };
    openMenuAt(toggle());
    clickEntry(middleOf(1));
    EXPECT_TRUE(eventually([&] { return x().area(alwaysHiddenDivider())->width == 12; }));
    for (const int withoutEffect : {2, 3}) {
        openMenuAt(toggle());
        clickEntry(middleOf(withoutEffect));
        EXPECT_TRUE(stays([&] { return x().area(alwaysHiddenDivider())->width == 12; }, milliseconds(200)));
    }
    openMenuAt(toggle());
    clickEntry(middleOf(0));
    EXPECT_TRUE(eventually([&] { return dividerIsExpanded(); }));
    openMenuAt(toggle());
    clickEntry(middleOf(4));
    EXPECT_EQ(velmo().wait(milliseconds(3000)), 0);
}

TEST_F(ToggleMenu, EntriesForPanelAndSettingsOpenTheirWindows) {
    startVelmo();
    const auto isShown = [&](const std::string& title) {
        const auto window = x().windowTitled(title);
        return window && x().isViewable(*window);
    };
    openMenuAt(toggle());
    chooseEntry(2);
    EXPECT_TRUE(eventually([&] { return isShown("Velmo.Panel"); }));
    xdotool({"key", "Escape"});
    EXPECT_TRUE(eventually([&] { return !isShown("Velmo.Panel") && dividerIsExpanded(); }));
    openMenuAt(toggle());
    chooseEntry(3);
    EXPECT_TRUE(eventually([&] { return isShown("Velmo Settings"); }));
}

TEST_F(ToggleMenu, OpensUnderTheCollapsedAlwaysHiddenDivider) {
    writeDefaults({{"autoRehide", false}, {"alwaysHiddenEnabled", true}});
    startVelmo();
    clickHolding("Alt_L", toggle());
    ASSERT_TRUE(eventually([&] { return x().area(alwaysHiddenDivider())->width == 12; }));
    openMenuAt(alwaysHiddenDivider());
    chooseEntry(2);
    EXPECT_TRUE(eventually([&] { return dividerIsExpanded(); }));
}

TEST_F(ToggleMenu, EndOfTheSessionEndsItToo) {
    startVelmo();
    openMenuAt(toggle());
    velmo().signal(SIGTERM);
    EXPECT_EQ(velmo().wait(milliseconds(3000)), 0);
}

TEST_F(ToggleMenu, EndOfTheDisplayEndsItToo) {
    startVelmo();
    openMenuAt(toggle());
    stopServer();
    EXPECT_TRUE(velmo().wait(milliseconds(5000)).has_value());
}

TEST_F(ToggleMenu, IsSilentInEveryLocale) {
    environment_["LC_ALL"] = "C";
    startVelmo();
    openMenuAt(toggle());
    xdotool({"key", "Escape"});
    EXPECT_TRUE(eventually([&] { return !menuArea(); }));
}

TEST_F(ToggleMenu, EscapeClosesItAndChangesNothing) {
    startVelmo();
    openMenuAt(toggle());
    xdotool({"key", "Escape"});
    EXPECT_TRUE(eventually([&] { return !menuArea(); }));
    EXPECT_TRUE(stays([&] { return dividerIsExpanded(); }, milliseconds(300)));
    openMenuAt(toggle());
}

TEST_F(ToggleMenu, OpensUnderACollapsedDividerToo) {
    writeDefaults({{"autoRehide", false}});
    startVelmo();
    startTrayProgram("gxkb", "Gxkb");
    click(toggle());
    ASSERT_TRUE(eventually([&] { return !dividerIsExpanded(); }));
    openMenuAt(divider());
    EXPECT_EQ(menuArea()->y, 26 + 4);
    chooseEntry(1);
    EXPECT_TRUE(eventually([&] { return dividerIsExpanded(); }));
}

TEST_F(ToggleMenu, NothingHidesWhileItIsOpenAndTheFullDelayFollows) {
    writeDefaults({{"rehideDelay", 1.5}});
    startVelmo();
    click(toggle());
    ASSERT_TRUE(eventually([&] { return !dividerIsExpanded(); }));
    openMenuAt(toggle());
    movePointer(elsewhereX, elsewhereY);
    EXPECT_TRUE(stays([&] { return !dividerIsExpanded(); }, milliseconds(2500)));
    const auto closed = std::chrono::steady_clock::now();
    xdotool({"key", "Escape"});
    ASSERT_TRUE(eventually([&] { return dividerIsExpanded(); }, milliseconds(3000)));
    EXPECT_GE(std::chrono::steady_clock::now() - closed, milliseconds(1500));
    EXPECT_LT(std::chrono::steady_clock::now() - closed, milliseconds(2200));
}

TEST_F(ToggleMenu, ClickElsewhereClosesItAndHidesNothing) {
    writeDefaults({{"autoRehide", false}});
    startVelmo();
    click(toggle());
    ASSERT_TRUE(eventually([&] { return !dividerIsExpanded(); }));
    openMenuAt(toggle());
    xdotool({"mousemove", std::to_string(elsewhereX), std::to_string(elsewhereY), "click", "1"});
    EXPECT_TRUE(eventually([&] { return !menuArea(); }));
    EXPECT_TRUE(stays([&] { return !dividerIsExpanded(); }, milliseconds(600)));
}

TEST_F(ToggleMenu, LastEntryEndsTheProgram) {
    startVelmo();
    openMenuAt(toggle());
    xdotool({"key", "Up"});
    xdotool({"key", "Return"});
    EXPECT_EQ(velmo().wait(milliseconds(3000)), 0);
}

TEST_F(ToggleMenu, ProgramsDockWhileItIsOpen) {
    startVelmo();
    openMenuAt(toggle());
    const auto icon = startTrayProgram("gxkb", "Gxkb");
    EXPECT_TRUE(isOnScreen(icon));
    EXPECT_TRUE(menuArea());
}

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
