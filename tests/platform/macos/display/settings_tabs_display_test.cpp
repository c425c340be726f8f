#include "macos/appkit/ns_slider.h"
#include "platform/macos/display/settings_display_test.h"
#include "platform/macos/doubles/menu_bar.h"

#include <string>
#include <vector>

namespace velmo::macos {
namespace {

TEST_F(SettingsDisplayTest, ChooseIconAndClickOnTheGeneralTab) {
    runSettings([&] {
        const auto icon = named<NSPopUpButton>(page(), "Icon");
        ASSERT_TRUE(icon);
        EXPECT_EQ(icon.indexOfSelectedItem(), 0);
        choose(icon, 2);
        EXPECT_EQ(textFor("toggleIconStyle"), "dot");
        EXPECT_EQ(icon.indexOfSelectedItem(), 2);
        press(buttonTitled("Open the hidden items panel"));
        EXPECT_EQ(textFor("clickAction"), "showPanel");
        EXPECT_EQ(buttonTitled("Open the hidden items panel").state(), 1);
        EXPECT_EQ(buttonTitled("Reveal items in the menu bar").state(), 0);
    });
}

TEST_F(SettingsDisplayTest, LaunchAtLoginAsTheSystemSays) {
    runSettings([&] {
        const auto login = named<NSSwitch>(page(), "Launch at login");
        ASSERT_TRUE(login);
        press(login);
        EXPECT_EQ(system.loginCalls, std::vector<std::string>{"register"});
        EXPECT_EQ(login.state(), 1);
        system.loginError = "Not now.";
        press(login);
        // It shows what is, and not what was done to it.
        EXPECT_EQ(login.state(), 1);
        EXPECT_TRUE(shows(page(), "Not now."));
    });
}

TEST_F(SettingsDisplayTest, ShowASwitchAsItIsWhereUsingItHasChangedNothing) {
    system.registeredStatus = 2;
    runSettings([&] {
        const auto login = named<NSSwitch>(page(), "Launch at login");
        ASSERT_TRUE(login);
        press(login);
        EXPECT_EQ(system.loginCalls, std::vector<std::string>{"register"});
        EXPECT_EQ(login.state(), 0);
    });
}

TEST_F(SettingsDisplayTest, SwitchAndSlideOnTheHidingTab) {
    runSettings([&] {
        const NSView page = open(1);
        expectToSwitch("Hide items again automatically", "autoRehide");
        expectToSwitch("Hide when clicking outside the menu bar", "hideOnClickOutside");
        expectToSwitch("Show hidden items when hovering over the toggle", "showOnHover");
        expectToSwitch("Show or hide by scrolling on the menu bar", "showOnScroll");
        expectToSwitch("Enable an always-hidden section", "alwaysHiddenEnabled");
        const auto delay = named<NSSlider>(page, "After");
        ASSERT_TRUE(delay);
        delay.setDoubleValue(11.6);
        use(delay);
        EXPECT_EQ(defaults().doubleForKey(NSString::from("rehideDelay")), 12);
        EXPECT_EQ(delay.doubleValue(), 12);
        EXPECT_TRUE(shows(page, "12 s"));
        picture("settings-hiding");
    });
}

TEST_F(SettingsDisplayTest, RecordAndRemoveAShortcut) {
    runSettings([&] {
        const NSView page = open(1);
        const auto record = named<NSButton>(page, "Show or hide items, Record Shortcut");
        ASSERT_TRUE(record);
        press(record);
        EXPECT_TRUE(buttonTitled("Press keys… (Esc cancels)"));
        const NSEvent key = doubles::makeEvent({.type = EventType::keyDown,
                                                .modifierFlags = modifier::command,
                                                .keyCode = 40,
                                                .charactersIgnoringModifiers = "k"});
        EXPECT_FALSE(doubles::tellLocalMonitors(key));
        runFor(0.1);
        EXPECT_TRUE(buttonTitled("⌘K"));
        ASSERT_EQ(system.hotKeys.size(), 1U);
        const auto remove = named<NSButton>(page, "Show or hide items, Remove shortcut");
        ASSERT_TRUE(remove);
        press(remove);
        EXPECT_TRUE(system.hotKeys.empty());
        EXPECT_FALSE(buttonTitled("⌘K"));
    });
}

TEST_F(SettingsDisplayTest, AskForPermissionsOnThePanelTab) {
    runSettings([&] {
        const NSView page = open(3);
        expectToSwitch("Refresh the pictures when opening the panel", "refreshPanelOnOpen");
        picture("settings-panel");
        const auto grant = named<NSButton>(page, "Accessibility, Grant…");
        ASSERT_TRUE(grant);
        const auto prompts = system.trustPrompts;
        press(grant);
        EXPECT_GT(system.trustPrompts.size(), prompts.size());
        system.isTrusted = true;
        EXPECT_TRUE(runUntil(
            [&] { return static_cast<bool>(named<NSButton>(page, "Accessibility, Open Settings")); }));
        const auto opened = system.openedAddresses.size();
        press(named<NSButton>(page, "Accessibility, Open Settings"));
        EXPECT_EQ(system.openedAddresses.size(), opened + 1);
    });
}

TEST_F(SettingsDisplayTest, ChooseASpacingAndLogOut) {
    runSettings([&] {
        open(4);
        press(buttonTitled("Compact"));
        EXPECT_FALSE(system.preferences.empty());
        EXPECT_EQ(buttonTitled("Compact").state(), 1);
        EXPECT_EQ(buttonTitled("System default").state(), 0);
        EXPECT_TRUE(shows(page(), "About a third more icons fit."));
        picture("settings-spacing");
        press(buttonTitled("Log Out…"));
        EXPECT_EQ(system.scripts.back(), "executed");
    });
}

}  // namespace
}  // namespace velmo::macos
