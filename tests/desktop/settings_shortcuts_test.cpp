#include "settings_by_keyboard.h"

namespace velmo::desktop {

namespace {

/// The recorders of the settings, by real key presses.
class SettingsShortcuts : public SettingsByKeyboard {
protected:
    std::string shortcut(const std::string& key) const {
        const auto stored = readDefaults().value(key, nlohmann::json::object());
        const auto text = stored.value("data", "{}");
        return nlohmann::json::parse(text).value("display", "");
    }
    void goToTheFirstShortcut() {
        goToTab(1);
        for (int stop = 0; stop < 7; ++stop)
            next();
    }
    void record(const std::string& combination) const {
        press("space");
        press(combination);
    }
};

TEST_F(SettingsShortcuts, RecordedShortcutsWorkAtOnceAndAfterARestart) {
    goToTheFirstShortcut();
    record("ctrl+alt+k");
    EXPECT_TRUE(eventually([&] { return shortcut("hotkey") == "⌃⌥K"; })) << shortcut("hotkey");
    // Past the button that removes it.
    next();
    next();
    record("ctrl+alt+p");
    EXPECT_TRUE(eventually([&] { return shortcut("panelHotkey") == "⌃⌥P"; })) << shortcut("panelHotkey");
    const auto bothWork = [&] {
        ASSERT_TRUE(eventually([&] { return dividerIsExpanded(); }));
        press("ctrl+alt+k");
        EXPECT_TRUE(eventually([&] { return !dividerIsExpanded(); }));
        press("ctrl+alt+k");
        EXPECT_TRUE(eventually([&] { return dividerIsExpanded(); }));
        press("ctrl+alt+p");
        EXPECT_TRUE(eventually([&] { return isShown("Velmo.Panel"); }));
        press("Escape");
        EXPECT_TRUE(eventually([&] { return !isShown("Velmo.Panel"); }));
    };
    bothWork();
    stopVelmo();
    startVelmo();
    startOrdinaryWindow();
    bothWork();
}

TEST_F(SettingsShortcuts, RecordsKeysByTheirPlaceUnderTheirNameOnThisKeyboard) {
    outputOf({"setxkbmap", "de"}, environment_);
    goToTheFirstShortcut();
    // Where a US keyboard has its Y, whose virtual key code is 16.
    record("ctrl+alt+z");
    EXPECT_TRUE(eventually([&] { return shortcut("hotkey") == "⌃⌥Z"; })) << shortcut("hotkey");
    EXPECT_EQ(nlohmann::json::parse(readDefaults()["hotkey"]["data"].get<std::string>())["keyCode"], 16);
    ASSERT_TRUE(eventually([&] { return dividerIsExpanded(); }));
    press("ctrl+alt+z");
    EXPECT_TRUE(eventually([&] { return !dividerIsExpanded(); }));
}

TEST_F(SettingsShortcuts, WaitsForAnotherKeyWhereTheWindowManagerHoldsTheFirst) {
    constexpr xcb_keycode_t keycodeOfJ = 44;
    xcb_grab_key(x().raw(), 0, x().root(), XCB_MOD_MASK_CONTROL | XCB_MOD_MASK_1, keycodeOfJ,
                 XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC);
    xcb_flush(x().raw());
    goToTheFirstShortcut();
    record("ctrl+alt+j");
    EXPECT_TRUE(stays([&] { return !readDefaults().contains("hotkey"); }, milliseconds(300)));
    press("ctrl+alt+k");
    EXPECT_TRUE(eventually([&] { return shortcut("hotkey") == "⌃⌥K"; })) << shortcut("hotkey");
}

TEST_F(SettingsShortcuts, EscapeLeavesTheShortcutAsItWas) {
    goToTheFirstShortcut();
    record("ctrl+alt+k");
    ASSERT_TRUE(eventually([&] { return shortcut("hotkey") == "⌃⌥K"; }));
    record("Escape");
    EXPECT_TRUE(stays([&] { return shortcut("hotkey") == "⌃⌥K"; }, milliseconds(300)));
    EXPECT_TRUE(settingsWindow());
    next();
    press("space");
    EXPECT_TRUE(eventually([&] { return !readDefaults().contains("hotkey"); }));
    // The button has gone. The keyboard is at the one before it.
    record("ctrl+alt+l");
    EXPECT_TRUE(eventually([&] { return shortcut("hotkey") == "⌃⌥L"; })) << shortcut("hotkey");
}

}  // namespace

}  // namespace velmo::desktop
