#include "settings_session.h"

#include <filesystem>
#include <fstream>

namespace velmo::desktop {

namespace {

/// Everything is done by keys alone, in the real window.
class SettingsByKeyboard : public SettingsSession {
protected:
    void SetUp() override {
        SettingsSession::SetUp();
        startWindowManager();
        startVelmo();
        openSettings();
        ASSERT_TRUE(eventually([&] { return activeWindow() == *settings(); }));
    }

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
    std::string shortcut(const std::string& key) const {
        const auto stored = readDefaults().value(key, nlohmann::json::object());
        const auto text = stored.value("data", "{}");
        return nlohmann::json::parse(text).value("display", "");
    }
    void record(const std::string& combination) const {
        press("space");
        press(combination);
    }
};

TEST_F(SettingsByKeyboard, GeneralTab) {
    next();
    press("Down");
    EXPECT_TRUE(comesToBe("toggleIconStyle", "ellipsis"));
    next();
    press("Down");
    EXPECT_TRUE(comesToBe("clickAction", "showPanel"));
    press("Up");
    EXPECT_TRUE(comesToBe("clickAction", "revealInMenuBar"));
    next();
    const auto autostart = home_ / "config" / "autostart";
    EXPECT_FALSE(std::filesystem::exists(autostart) && !std::filesystem::is_empty(autostart));
    press("space");
    EXPECT_TRUE(eventually(
        [&] { return std::filesystem::exists(autostart) && !std::filesystem::is_empty(autostart); }));
}

TEST_F(SettingsByKeyboard, HidingTab) {
    goToTab(1);
    next();
    press("space");
    EXPECT_TRUE(comesToBe("autoRehide", false));
    next();
    press("Right");
    EXPECT_TRUE(comesToBe("rehideDelay", 6.0));
    press("Left");
    EXPECT_TRUE(comesToBe("rehideDelay", 5.0));
    next();
    press("space");
    EXPECT_TRUE(comesToBe("hideOnClickOutside", false));
    next();
    press("space");
    EXPECT_TRUE(comesToBe("showOnHover", true));
    next();
    press("space");
    EXPECT_TRUE(comesToBe("showOnScroll", true));
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
    goToTab(1);
    for (int stop = 0; stop < 7; ++stop)
        next();
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

TEST_F(SettingsByKeyboard, EscapeLeavesTheShortcutAsItWas) {
    goToTab(1);
    for (int stop = 0; stop < 7; ++stop)
        next();
    record("ctrl+alt+k");
    ASSERT_TRUE(eventually([&] { return shortcut("hotkey") == "⌃⌥K"; }));
    record("Escape");
    EXPECT_TRUE(stays([&] { return shortcut("hotkey") == "⌃⌥K"; }, milliseconds(300)));
    EXPECT_TRUE(settings());
    next();
    press("space");
    EXPECT_TRUE(eventually([&] { return !readDefaults().contains("hotkey"); }));
}

TEST_F(SettingsByKeyboard, ClockTab) {
    goToTab(2);
    next();
    EXPECT_FALSE(isShown("Velmo.Clock"));
    press("space");
    EXPECT_TRUE(comesToBe("clockEnabled", true));
    EXPECT_TRUE(eventually([&] { return isShown("Velmo.Clock"); }));
    next();
    press("Down");
    ASSERT_TRUE(eventually([&] { return readDefaults().contains("clockFormat"); }));
    const std::string preset = readDefaults()["clockFormat"];
    next();
    press("End");
    xdotool({"type", "yyy"});
    EXPECT_TRUE(comesToBe("clockFormat", preset + "yyy"));
    press("BackSpace");
    EXPECT_TRUE(comesToBe("clockFormat", preset + "yy"));
    press("Home");
    xdotool({"type", "d "});
    EXPECT_TRUE(comesToBe("clockFormat", "d " + preset + "yy"));
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

TEST_F(SettingsByKeyboard, SpacingTab) {
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
    press("Up");
    EXPECT_TRUE(eventually([&] { return storedSpacing().is_null(); })) << storedSpacing();
}

}  // namespace

}  // namespace velmo::desktop
