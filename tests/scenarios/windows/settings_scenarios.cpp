#include "scenarios/scenario_test.h"

namespace velmo {
namespace {

/// The settings, opened as the user opens them: by starting the program that is running.
class SettingsScenario : public ScenarioTest {
protected:
    void runSettings(const std::string& tab, const std::function<void()>& user) {
        run([&] {
            desktop_->startAgain();
            ASSERT_TRUE(settings_.isShown());
            settings_.chooseTab(tab);
            user();
        });
    }
    /// Switches a setting over and back.
    void expectToSwitch(const std::string& title, const char* key) {
        for (int i = 0; i < 2; ++i) {
            const bool before = desktop_->storedFlag(key);
            EXPECT_EQ(settings_.isOn(title), before) << title;
            settings_.switchOver(title);
            EXPECT_EQ(desktop_->storedFlag(key), !before) << title;
            EXPECT_EQ(settings_.isOn(title), !before) << title;
        }
    }

    static constexpr std::uint16_t keyK = 40;
    /// As hot keys have it.
    static constexpr std::uint32_t command = 0x100;
    ScenarioWindow& settings_ = desktop_->settings();
};

TEST_F(SettingsScenario, OpenAtTheFirstLaunchAlone) {
    desktop_->store("hasCompletedFirstLaunch", false);
    run([&] {
        EXPECT_TRUE(settings_.isShown());
        EXPECT_TRUE(desktop_->storedFlag("hasCompletedFirstLaunch"));
        EXPECT_EQ(settings_.tabs(), (Titles{"General", "Hiding", "Clock", "Panel", "Spacing"}));
        EXPECT_EQ(settings_.chosenTab(), "General");
        EXPECT_TRUE(settings_.shows("How to use Velmo"));
    });
    run([&] { EXPECT_FALSE(settings_.isShown()); });
}

TEST_F(SettingsScenario, ShowTheTabThatIsChosenAndNoOther) {
    runSettings("Hiding", [&] {
        EXPECT_EQ(settings_.chosenTab(), "Hiding");
        EXPECT_TRUE(settings_.shows("Always hidden"));
        EXPECT_FALSE(settings_.shows("How to use Velmo"));
        settings_.chooseTab("General");
        EXPECT_EQ(settings_.chosenTab(), "General");
        EXPECT_FALSE(settings_.shows("Always hidden"));
        EXPECT_TRUE(settings_.shows("How to use Velmo"));
    });
}

TEST_F(SettingsScenario, OpenAgainOnTheTabThatTheUserLeft) {
    runSettings("Panel", [&] {
        settings_.close();
        EXPECT_FALSE(settings_.isShown());
        desktop_->startAgain();
        EXPECT_TRUE(settings_.isShown());
        EXPECT_EQ(settings_.chosenTab(), "Panel");
    });
}

TEST_F(SettingsScenario, OpenFromTheMenus) {
    desktop_->store("clockEnabled", true);
    desktop_->store("autoRehide", false);
    run([&] {
        choose(toggle, "Settings…");
        ASSERT_TRUE(settings_.isShown());
        EXPECT_EQ(settings_.chosenTab(), "General");
        settings_.close();
        // The clock is new, so that it is at the far left.
        reveal(RevealLevel::all);
        choose(clock, "Clock Settings…");
        ASSERT_TRUE(settings_.isShown());
        EXPECT_EQ(settings_.chosenTab(), "Clock");
    });
}

TEST_F(SettingsScenario, ChooseTheIconAndWhatAClickDoes) {
    runSettings("General", [&] {
        EXPECT_EQ(settings_.chosen("Icon"), "Chevron  ‹ ›");
        settings_.choose("Icon", "Dot  ●");
        EXPECT_EQ(desktop_->storedText("toggleIconStyle"), "dot");
        EXPECT_EQ(settings_.chosen("Icon"), "Dot  ●");
        EXPECT_EQ(desktop_->symbol(toggle), "circle");
        EXPECT_EQ(settings_.chosen("Clicking it"), "Reveal items in the menu bar");
        settings_.choose("Clicking it", "Open the hidden items panel");
        EXPECT_EQ(desktop_->storedText("clickAction"), "showPanel");
        EXPECT_EQ(settings_.chosen("Clicking it"), "Open the hidden items panel");
    });
}

TEST_F(SettingsScenario, LaunchAtLoginAsTheSystemSays) {
    runSettings("General", [&] {
        EXPECT_FALSE(settings_.isOn("Launch at login"));
        settings_.switchOver("Launch at login");
        EXPECT_TRUE(desktop_->startsAtLogin());
        EXPECT_TRUE(settings_.isOn("Launch at login"));
        desktop_->setLoginError("Not now.");
        settings_.switchOver("Launch at login");
        // It shows what is, and not what was done to it.
        EXPECT_TRUE(settings_.isOn("Launch at login"));
        EXPECT_TRUE(settings_.shows("Not now."));
        desktop_->setLoginError("");
        settings_.switchOver("Launch at login");
        EXPECT_FALSE(desktop_->startsAtLogin());
        EXPECT_FALSE(settings_.isOn("Launch at login"));
        EXPECT_FALSE(settings_.shows("Not now."));
    });
}

TEST_F(SettingsScenario, SwitchAndSlideOnTheHidingTab) {
    runSettings("Hiding", [&] {
        expectToSwitch("Hide items again automatically", "autoRehide");
        expectToSwitch("Hide when clicking outside the menu bar", "hideOnClickOutside");
        expectToSwitch("Show hidden items when hovering over the toggle", "showOnHover");
        expectToSwitch("Show or hide by scrolling on the menu bar", "showOnScroll");
        expectToSwitch("Enable an always-hidden section", "alwaysHiddenEnabled");
        EXPECT_EQ(settings_.position("After"), 5);
        EXPECT_TRUE(settings_.shows("5 s"));
        settings_.moveSlider("After", 12);
        EXPECT_EQ(desktop_->storedNumber("rehideDelay"), 12);
        EXPECT_EQ(settings_.position("After"), 12);
        EXPECT_TRUE(settings_.shows("12 s"));
    });
}

TEST_F(SettingsScenario, TakeEffectAtOnce) {
    runSettings("Hiding", [&] {
        EXPECT_FALSE(desktop_->isVisible(alwaysHiddenDivider));
        settings_.switchOver("Enable an always-hidden section");
        EXPECT_TRUE(desktop_->isVisible(alwaysHiddenDivider));
        settings_.moveSlider("After", 1);
        desktop_->click(toggle);
        EXPECT_EQ(level(), RevealLevel::hidden);
        EXPECT_TRUE(hidesAfter(1));
    });
}

TEST_F(SettingsScenario, RecordAndRemoveAShortcut) {
    runSettings("Hiding", [&] {
        settings_.press("Show or hide items, Record Shortcut");
        EXPECT_TRUE(settings_.hasButton("Press keys… (Esc cancels)"));
        EXPECT_TRUE(settings_.pressKey(keyK, modifier::command, "k"));
        EXPECT_TRUE(settings_.hasButton("⌘K"));
        EXPECT_FALSE(settings_.pressKey(keyK, modifier::command, "k"));
        EXPECT_FALSE(desktop_->storedData("hotkey").empty());
        EXPECT_TRUE(desktop_->pressShortcut(keyK, command));
        EXPECT_EQ(level(), RevealLevel::hidden);
        settings_.press("Show or hide items, Remove shortcut");
        EXPECT_FALSE(settings_.hasButton("⌘K"));
        EXPECT_FALSE(desktop_->isStored("hotkey"));
        EXPECT_FALSE(desktop_->pressShortcut(keyK, command));
    });
}

TEST_F(SettingsScenario, RecordAndRemoveTheShortcutOfThePanel) {
    desktop_->setMayCapture(true);
    runSettings("Hiding", [&] {
        desktop_->setHiddenIcons({"Mail"});
        settings_.press("Open the hidden items panel, Record Shortcut");
        EXPECT_TRUE(settings_.pressKey(keyK, modifier::command, "k"));
        EXPECT_FALSE(desktop_->storedData("panelHotkey").empty());
        EXPECT_FALSE(desktop_->isStored("hotkey"));
        EXPECT_TRUE(desktop_->pressShortcut(keyK, command));
        EXPECT_TRUE(desktop_->happensAfter(0.35, [&] { return desktop_->panel().isShown(); }));
        settings_.press("Open the hidden items panel, Remove shortcut");
        EXPECT_FALSE(desktop_->isStored("panelHotkey"));
        EXPECT_FALSE(desktop_->pressShortcut(keyK, command));
    });
}

TEST_F(SettingsScenario, ShowTheClockInTheChosenPattern) {
    runSettings("Clock", [&] {
        expectToSwitch("Show a clock and calendar in the menu bar", "clockEnabled");
        settings_.switchOver("Show a clock and calendar in the menu bar");
        EXPECT_TRUE(desktop_->hasItem(clock));
        EXPECT_EQ(settings_.textIn("Pattern"), "EEE d MMM  HH:mm");
        EXPECT_EQ(settings_.chosen("Preset"), "Day, date and time");
        settings_.choose("Preset", "Time with seconds");
        EXPECT_EQ(desktop_->storedText("clockFormat"), "HH:mm:ss");
        EXPECT_EQ(settings_.textIn("Pattern"), "HH:mm:ss");
        settings_.type("Pattern", "'Now in' yyyy");
        EXPECT_EQ(desktop_->storedText("clockFormat"), "'Now in' yyyy");
        EXPECT_EQ(settings_.chosen("Preset"), "Custom");
        const std::string title = desktop_->title(clock);
        EXPECT_EQ(title.substr(0, 9), "Now in 20");
        EXPECT_TRUE(settings_.shows(title));
        settings_.press("System Clock Options…");
        EXPECT_EQ(desktop_->openedAddresses(),
                  Titles{"x-apple.systempreferences:com.apple.ControlCenter-Settings.extension"});
    });
}

TEST_F(SettingsScenario, PreviewThePatternEachSecond) {
    desktop_->store("clockFormat", std::string("HH:mm:ss"));
    runSettings("Clock", [&] {
        const auto before = settings_.texts();
        EXPECT_TRUE(desktop_->happensWithin(1, [&] { return settings_.texts() != before; }));
    });
}

TEST_F(SettingsScenario, AskForPermissions) {
    runSettings("Panel", [&] {
        expectToSwitch("Refresh the pictures when opening the panel", "refreshPanelOnOpen");
        settings_.press("Screen Recording, Grant…");
        EXPECT_EQ(desktop_->captureQuestions(), 1);
        settings_.press("Accessibility, Grant…");
        EXPECT_EQ(desktop_->trustQuestions(), 1);
        const auto opened = desktop_->openedAddresses().size();
        desktop_->setTrusted(true);
        EXPECT_TRUE(
            desktop_->happensWithin(1, [&] { return settings_.hasButton("Accessibility, Open Settings"); }));
        EXPECT_TRUE(settings_.hasButton("Screen Recording, Grant…"));
        settings_.press("Accessibility, Open Settings");
        EXPECT_EQ(desktop_->trustQuestions(), 1);
        EXPECT_EQ(desktop_->openedAddresses().size(), opened + 1);
        desktop_->setMayCapture(true);
        EXPECT_TRUE(desktop_->happensWithin(
            1, [&] { return settings_.hasButton("Screen Recording, Open Settings"); }));
        settings_.press("Screen Recording, Open Settings");
        EXPECT_EQ(desktop_->captureQuestions(), 1);
        const auto addresses = desktop_->openedAddresses();
        ASSERT_EQ(addresses.size(), opened + 2);
        EXPECT_NE(addresses[opened], addresses[opened + 1]);
    });
}

TEST_F(SettingsScenario, ChooseASpacingAndLogOut) {
    runSettings("Spacing", [&] {
        EXPECT_EQ(settings_.chosen("Spacing"), "System default");
        settings_.choose("Spacing", "Compact");
        EXPECT_EQ(desktop_->iconSpacing(), 10);
        EXPECT_EQ(settings_.chosen("Spacing"), "Compact");
        settings_.choose("Spacing", "System default");
        EXPECT_EQ(desktop_->iconSpacing(), std::nullopt);
        settings_.press("Log Out…");
        EXPECT_EQ(desktop_->logOuts(), 1);
    });
}

TEST_F(SettingsScenario, FindTheirValuesAgainAfterARestart) {
    runSettings("Hiding", [&] {
        settings_.switchOver("Show hidden items when hovering over the toggle");
        settings_.moveSlider("After", 7);
        settings_.chooseTab("Clock");
        settings_.type("Pattern", "HH");
        settings_.chooseTab("General");
        settings_.choose("Icon", "Eye");
    });
    runSettings("Hiding", [&] {
        EXPECT_TRUE(settings_.isOn("Show hidden items when hovering over the toggle"));
        EXPECT_EQ(settings_.position("After"), 7);
        settings_.chooseTab("Clock");
        EXPECT_EQ(settings_.textIn("Pattern"), "HH");
        settings_.chooseTab("General");
        EXPECT_EQ(settings_.chosen("Icon"), "Eye");
        EXPECT_EQ(desktop_->symbol(toggle), "eye.slash");
    });
}

}  // namespace
}  // namespace velmo
