#include "settings_session.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>

namespace velmo::desktop {

namespace {

/// Everything is done by keys alone, in the real window.
class SettingsByKeyboard : public SettingsSession {
protected:
    void SetUp() override {
        SettingsSession::SetUp();
        prepareSession();
        startWindowManager();
        startVelmo();
        openSettings();
        ASSERT_TRUE(eventually([&] { return activeWindow() == *settings(); }));
    }

    virtual void prepareSession() {}

    void press(const std::string& key) const { xdotool({"key", key}); }
    /// The chain begins behind the tabs, of which the chosen one is a stop.
    void goToTab(int index) {
        const int stopsOfGeneral = 4;
        for (int stop = 0; stop < stopsOfGeneral; ++stop)
            press("Tab");
        for (int tab = 0; tab < index; ++tab)
            press("Right");
    }
    void next() const { press("Tab"); }

    /// Waits for a setting in the file.
    testing::AssertionResult comesToBe(const std::string& key, const nlohmann::json& value) const {
        if (eventually([&] { return readDefaults().value(key, nlohmann::json()) == value; }))
            return testing::AssertionSuccess();
        return testing::AssertionFailure() << key << ": " << readDefaults().value(key, nlohmann::json());
    }
    bool isShown(const std::string& title) const {
        const auto window = x().windowTitled(title);
        return window && x().isViewable(*window);
    }
    /// By a click, with the pointer elsewhere afterwards.
    void reveal() const {
        click(toggle());
        movePointer(farLeft, 300);
        ASSERT_TRUE(eventually([&] { return !dividerIsExpanded(); }));
    }
    void clickElsewhere() const { xdotool({"mousemove", std::to_string(farLeft), "300", "click", "1"}); }
    /// Gives the settings the keyboard again, at the same control.
    void comeBack() const {
        startAgain();
        // A window manager may call it active all the while.
        ASSERT_TRUE(eventually([&] { return x().keyboardOwner() == *settings(); }));
    }
    static std::string textOf(const std::filesystem::path& file) {
        std::ifstream stream(file);
        return {std::istreambuf_iterator<char>(stream), {}};
    }
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

TEST_F(SettingsByKeyboard, GeneralTab) {
    const auto picture = [&] { return x().pixels(*x().area(toggle())); };
    const auto chevron = picture();
    next();
    press("Down");
    EXPECT_TRUE(comesToBe("toggleIconStyle", "ellipsis"));
    EXPECT_TRUE(eventually([&] { return picture() != chevron; }));
    next();
    press("Down");
    EXPECT_TRUE(comesToBe("clickAction", "showPanel"));
    click(toggle());
    EXPECT_TRUE(eventually([&] { return isShown("Velmo.Panel"); }));
    press("Escape");
    EXPECT_TRUE(eventually([&] { return !isShown("Velmo.Panel") && dividerIsExpanded(); }));
    press("Up");
    EXPECT_TRUE(comesToBe("clickAction", "revealInMenuBar"));
    click(toggle());
    EXPECT_TRUE(eventually([&] { return !dividerIsExpanded(); }));
    EXPECT_FALSE(isShown("Velmo.Panel"));
    next();
    const auto autostart = home_ / "config" / "autostart" / "velmo.desktop";
    EXPECT_FALSE(std::filesystem::exists(autostart));
    press("space");
    EXPECT_TRUE(eventually([&] { return std::filesystem::exists(autostart); }));
    EXPECT_NE(textOf(autostart).find(VELMO_PROGRAM), std::string::npos);
    press("space");
    EXPECT_TRUE(eventually([&] { return !std::filesystem::exists(autostart); }));
}

TEST_F(SettingsByKeyboard, HidingAgain) {
    goToTab(1);
    next();
    next();
    press("Right");
    EXPECT_TRUE(comesToBe("rehideDelay", 6.0));
    press("Home");
    EXPECT_TRUE(comesToBe("rehideDelay", 1.0));
    reveal();
    EXPECT_TRUE(stays([&] { return !dividerIsExpanded(); }, milliseconds(600)));
    EXPECT_TRUE(eventually([&] { return dividerIsExpanded(); }, milliseconds(2500)));
    press("shift+Tab");
    press("space");
    EXPECT_TRUE(comesToBe("autoRehide", false));
    reveal();
    EXPECT_TRUE(stays([&] { return !dividerIsExpanded(); }, milliseconds(2000)));
    clickElsewhere();
    EXPECT_TRUE(eventually([&] { return dividerIsExpanded(); }));
    comeBack();
    next();
    next();
    press("space");
    EXPECT_TRUE(comesToBe("hideOnClickOutside", false));
    reveal();
    clickElsewhere();
    EXPECT_TRUE(stays([&] { return !dividerIsExpanded(); }, milliseconds(500)));
}

TEST_F(SettingsByKeyboard, Showing) {
    const auto place = *x().area(toggle());
    goToTab(1);
    for (int stop = 0; stop < 4; ++stop)
        next();
    movePointer(place.midX(), place.midY());
    EXPECT_TRUE(stays([&] { return dividerIsExpanded(); }, milliseconds(700)));
    movePointer(farLeft, 300);
    press("space");
    EXPECT_TRUE(comesToBe("showOnHover", true));
    movePointer(place.midX(), place.midY());
    EXPECT_TRUE(eventually([&] { return !dividerIsExpanded(); }));
    movePointer(farLeft, 300);
    press("space");
    EXPECT_TRUE(comesToBe("showOnHover", false));
    clickElsewhere();
    ASSERT_TRUE(eventually([&] { return dividerIsExpanded(); }));
    comeBack();
    next();
    xdotool({"mousemove", "300", "13", "click", "4"});
    EXPECT_TRUE(stays([&] { return dividerIsExpanded(); }, milliseconds(400)));
    press("space");
    EXPECT_TRUE(comesToBe("showOnScroll", true));
    xdotool({"click", "4"});
    EXPECT_TRUE(eventually([&] { return !dividerIsExpanded(); }));
    next();
    EXPECT_FALSE(isShown("Velmo.AlwaysHiddenDivider"));
    press("space");
    EXPECT_TRUE(comesToBe("alwaysHiddenEnabled", true));
    EXPECT_TRUE(eventually([&] { return isShown("Velmo.AlwaysHiddenDivider"); }));
}

TEST_F(SettingsByKeyboard, BeginsAtTheTopOfATabThatWasClicked) {
    next();
    next();
    const auto window = std::to_string(*settings());
    xdotool({"mousemove", "--window", window, "190", "35", "click", "1"});
    ASSERT_TRUE(stays([&] { return readDefaults().value("autoRehide", true); }, milliseconds(100)));
    next();
    press("space");
    EXPECT_TRUE(comesToBe("autoRehide", false));
}

TEST_F(SettingsByKeyboard, RecordedShortcutsWorkAtOnceAndAfterARestart) {
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

TEST_F(SettingsByKeyboard, RecordsKeysByTheirPlaceUnderTheirNameOnThisKeyboard) {
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

TEST_F(SettingsByKeyboard, WaitsForAnotherKeyWhereTheWindowManagerHoldsTheFirst) {
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

TEST_F(SettingsByKeyboard, EscapeLeavesTheShortcutAsItWas) {
    goToTheFirstShortcut();
    record("ctrl+alt+k");
    ASSERT_TRUE(eventually([&] { return shortcut("hotkey") == "⌃⌥K"; }));
    record("Escape");
    EXPECT_TRUE(stays([&] { return shortcut("hotkey") == "⌃⌥K"; }, milliseconds(300)));
    EXPECT_TRUE(settings());
    next();
    press("space");
    EXPECT_TRUE(eventually([&] { return !readDefaults().contains("hotkey"); }));
    // The button has gone. The keyboard is at the one before it.
    record("ctrl+alt+l");
    EXPECT_TRUE(eventually([&] { return shortcut("hotkey") == "⌃⌥L"; })) << shortcut("hotkey");
}

TEST_F(SettingsByKeyboard, ClockTab) {
    goToTab(2);
    next();
    EXPECT_FALSE(isShown("Velmo.Clock"));
    press("space");
    EXPECT_TRUE(comesToBe("clockEnabled", true));
    EXPECT_TRUE(eventually([&] { return isShown("Velmo.Clock"); }));
    const auto widthOfClock = [&] { return x().area(*x().windowTitled("Velmo.Clock"))->width; };
    const int width = widthOfClock();
    next();
    press("Down");
    ASSERT_TRUE(eventually([&] { return readDefaults().contains("clockFormat"); }));
    const std::string preset = readDefaults()["clockFormat"];
    EXPECT_TRUE(eventually([&] { return widthOfClock() != width; }));
    next();
    press("End");
    xdotool({"type", "yyy"});
    EXPECT_TRUE(comesToBe("clockFormat", preset + "yyy"));
    press("BackSpace");
    EXPECT_TRUE(comesToBe("clockFormat", preset + "yy"));
    press("Home");
    xdotool({"type", "d "});
    EXPECT_TRUE(comesToBe("clockFormat", "d " + preset + "yy"));
    const int longer = widthOfClock();
    press("ctrl+a");
    press("BackSpace");
    EXPECT_TRUE(comesToBe("clockFormat", ""));
    EXPECT_TRUE(eventually([&] { return widthOfClock() < longer; }));
}

TEST_F(SettingsByKeyboard, PanelTab) {
    goToTab(3);
    next();
    press("space");
    EXPECT_TRUE(eventually([&] { return isShown("Velmo.Panel"); }));
    press("Escape");
    EXPECT_TRUE(eventually([&] { return !isShown("Velmo.Panel"); }));
    next();
    press("space");
    EXPECT_TRUE(comesToBe("refreshPanelOnOpen", false));
}

/// The desktop's own programs note how they were started.
class SettingsOnGnome : public SettingsByKeyboard {
protected:
    void prepareSession() override {
        const auto programs = home_ / "programs";
        std::filesystem::create_directories(programs);
        for (const char* name : {"gnome-control-center", "gnome-session-quit"}) {
            std::ofstream(programs / name) << "#!/bin/sh\necho \"${0##*/}\" \"$@\" >>\"$HOME/started\"\n";
            std::filesystem::permissions(programs / name, std::filesystem::perms::owner_all);
        }
        environment_["PATH"] = programs.string() + ":" + std::getenv("PATH");
        environment_["XDG_CURRENT_DESKTOP"] = "GNOME";
    }
    std::string started() const { return textOf(home_ / "started"); }
    void pressStop(int stop) {
        for (int passed = 0; passed < stop; ++passed)
            next();
        press("space");
    }
};

TEST_F(SettingsOnGnome, ClockOptionsAreTheDesktopsOwn) {
    goToTab(2);
    pressStop(4);
    EXPECT_TRUE(eventually([&] { return started() == "gnome-control-center datetime\n"; })) << started();
}

TEST_F(SettingsOnGnome, PermissionsOpenTheDesktopsPrivacySettings) {
    goToTab(3);
    pressStop(3);
    EXPECT_TRUE(eventually([&] { return started() == "gnome-control-center privacy\n"; })) << started();
    pressStop(1);
    EXPECT_TRUE(eventually([&] {
        return started() == "gnome-control-center privacy\ngnome-control-center privacy\n";
    })) << started();
}

TEST_F(SettingsOnGnome, LogOutAsksTheSessionManager) {
    goToTab(4);
    pressStop(2);
    EXPECT_TRUE(eventually([&] { return started() == "gnome-session-quit --logout\n"; })) << started();
}

TEST_F(SettingsByKeyboard, SpacingTab) {
    const auto widthOf = [&](xcb_window_t icon) { return x().area(x().parent(icon))->width; };
    const auto first = startTrayProgram("gxkb", "Gxkb");
    const int usual = widthOf(first);
    comeBack();
    goToTab(4);
    next();
    press("Down");
    const auto storedSpacing = [&]() -> nlohmann::json {
        for (const auto& file : std::filesystem::directory_iterator(defaultsFile().parent_path())) {
            if (!file.path().filename().string().starts_with("global-"))
                continue;
            std::ifstream stream(file.path());
            const auto values = nlohmann::json::parse(stream, nullptr, false);
            return values.is_object() ? values.value("NSStatusItemSpacing", nlohmann::json())
                                      : nlohmann::json();
        }
        return {};
    };
    EXPECT_TRUE(eventually([&] { return storedSpacing() == 10; })) << storedSpacing();
    const auto second = startTrayProgram("parcellite", "Parcellite");
    EXPECT_TRUE(eventually([&] { return widthOf(second) < usual; })) << widthOf(second) << " of " << usual;
    EXPECT_EQ(widthOf(first), usual);
    comeBack();
    press("Up");
    EXPECT_TRUE(eventually([&] { return storedSpacing().is_null(); })) << storedSpacing();
}

}  // namespace

}  // namespace velmo::desktop
