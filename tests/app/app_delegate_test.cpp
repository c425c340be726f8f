#include "app/app_delegate.h"

#include "platform/simulated/simulated_desktop.h"
#include "views/view_search.h"

#include <gtest/gtest.h>

#include <thread>

namespace velmo {
namespace {

using Call = SimulatedApplication::Call;

class AppDelegateTest : public testing::Test {
protected:
    void completeFirstLaunch() { desktop_.userDefaults().setBool(true, "hasCompletedFirstLaunch"); }
    const std::vector<SimulatedWindow*>& windows() { return desktop_.windows().windows(); }
    std::string selectedTab() { return std::get<TabView>(windows().front()->content().content).selection; }

    SimulatedDesktop desktop_;
};

TEST_F(AppDelegateTest, HasNoManagerBeforeLaunchingHasFinished) {
    const AppDelegate delegate(desktop_.platform());
    EXPECT_EQ(delegate.menuBarManager(), nullptr);
    EXPECT_TRUE(desktop_.statusBar().items().empty());
    EXPECT_TRUE(desktop_.userDefaults().stored().empty());
    EXPECT_TRUE(desktop_.userDefaults().registered().empty());
}

TEST_F(AppDelegateTest, SetsTheMenuBarUpAtTheLaunch) {
    AppDelegate delegate(desktop_.platform());
    desktop_.application().setDelegate(&delegate);
    desktop_.application().run();
    ASSERT_NE(delegate.menuBarManager(), nullptr);
    EXPECT_EQ(desktop_.statusBar().items().size(), 3U);
    EXPECT_EQ(delegate.menuBarManager()->revealLevel(), RevealLevel::none);
}

TEST_F(AppDelegateTest, RecordsTheFirstLaunch) {
    AppDelegate delegate(desktop_.platform());
    bool itemsWereThere = false;
    desktop_.userDefaults().setWriteObserver([&](const std::string& key, const auto&) {
        if (key == "hasCompletedFirstLaunch")
            itemsWereThere = desktop_.statusBar().items().size() == 3;
    });
    delegate.applicationDidFinishLaunching();
    EXPECT_TRUE(itemsWereThere);
    EXPECT_EQ(desktop_.userDefaults().stored(),
              (SimulatedUserDefaults::Values{{"hasCompletedFirstLaunch", true}}));
}

TEST_F(AppDelegateTest, RecordsNothingAtLaterLaunches) {
    desktop_.userDefaults().setBool(true, "hasCompletedFirstLaunch");
    int records = 0;
    desktop_.userDefaults().setWriteObserver(
        [&](const std::string& key, const auto&) { records += key == "hasCompletedFirstLaunch"; });
    AppDelegate delegate(desktop_.platform());
    delegate.applicationDidFinishLaunching();
    EXPECT_EQ(records, 0);
}

TEST_F(AppDelegateTest, RecordsALaunchThatWasSaidNotToHaveHappened) {
    desktop_.userDefaults().setBool(false, "hasCompletedFirstLaunch");
    AppDelegate delegate(desktop_.platform());
    delegate.applicationDidFinishLaunching();
    EXPECT_TRUE(desktop_.userDefaults().boolForKey("hasCompletedFirstLaunch"));
}

TEST_F(AppDelegateTest, OpensTheSettingsAtTheFirstLaunch) {
    AppDelegate delegate(desktop_.platform());
    bool windowWasMissing = false;
    desktop_.userDefaults().setWriteObserver([&](const std::string& key, const auto&) {
        windowWasMissing = windowWasMissing || (key == "hasCompletedFirstLaunch" && windows().empty());
    });
    delegate.applicationDidFinishLaunching();
    EXPECT_TRUE(windowWasMissing);
    ASSERT_EQ(windows().size(), 1U);
    EXPECT_TRUE(windows().front()->isVisible());
    EXPECT_EQ(selectedTab(), "general");
    EXPECT_EQ(desktop_.application().calls(), std::vector<Call>{Call::activate});
}

TEST_F(AppDelegateTest, OpensNoSettingsAtLaterLaunches) {
    completeFirstLaunch();
    AppDelegate delegate(desktop_.platform());
    delegate.applicationDidFinishLaunching();
    desktop_.advance(10);
    EXPECT_TRUE(windows().empty());
    EXPECT_TRUE(desktop_.application().calls().empty());
    EXPECT_EQ(desktop_.runLoop().timerCount(), 0U);
}

TEST_F(AppDelegateTest, OpensTheSettingsAtAReopeningAndLeavesNothingToTheSystem) {
    completeFirstLaunch();
    AppDelegate delegate(desktop_.platform());
    desktop_.application().setDelegate(&delegate);
    desktop_.application().run();
    for (const bool hasVisibleWindows : {false, true}) {
        EXPECT_FALSE(desktop_.application().reopen(hasVisibleWindows));
        ASSERT_EQ(windows().size(), 1U);
        EXPECT_TRUE(windows().front()->isVisible());
        EXPECT_EQ(desktop_.application().calls().back(), Call::activate);
        windows().front()->close();
    }
}

TEST_F(AppDelegateTest, ReopensTheSettingsOnTheTabThatTheyHold) {
    AppDelegate delegate(desktop_.platform());
    delegate.applicationDidFinishLaunching();
    delegate.openSettings(SettingsTab::spacing);
    windows().front()->close();
    delegate.applicationShouldHandleReopen(false);
    EXPECT_EQ(selectedTab(), "spacing");
}

TEST_F(AppDelegateTest, MakesTheSettingsOnce) {
    completeFirstLaunch();
    AppDelegate delegate(desktop_.platform());
    delegate.applicationDidFinishLaunching();
    delegate.openSettings(SettingsTab::hiding);
    auto* const window = windows().front();
    delegate.openSettings(std::nullopt);
    EXPECT_EQ(windows(), std::vector<SimulatedWindow*>{window});
    EXPECT_EQ(selectedTab(), "hiding");
}

TEST_F(AppDelegateTest, ActivatesTheApplicationAfterTheWindowIsShown) {
    completeFirstLaunch();
    AppDelegate delegate(desktop_.platform());
    bool wasVisible = false;
    desktop_.application().setActivationObserver([&] { wasVisible = windows().front()->isVisible(); });
    delegate.openSettings(SettingsTab::general);
    EXPECT_TRUE(wasVisible);
}

TEST_F(AppDelegateTest, OpensTheSettingsFromTheMenuBar) {
    completeFirstLaunch();
    desktop_.userDefaults().setBool(true, "clockEnabled");
    desktop_.screenCapture().setGranted(false);
    AppDelegate delegate(desktop_.platform());
    delegate.applicationDidFinishLaunching();
    ASSERT_TRUE(desktop_.click("Velmo.Toggle", MouseButton::left, modifier::option));
    desktop_.menus().setScript([](SimulatedOpenMenu& menu) { menu.choose("Clock Settings…"); });
    ASSERT_TRUE(desktop_.click("Velmo.Clock", MouseButton::right));
    EXPECT_EQ(selectedTab(), "clock");
    desktop_.menus().setScript([](SimulatedOpenMenu& menu) { menu.choose("Settings…"); });
    ASSERT_TRUE(desktop_.click("Velmo.Toggle", MouseButton::right));
    EXPECT_EQ(selectedTab(), "clock");
    desktop_.menus().setScript([](SimulatedOpenMenu& menu) { menu.choose("Open Hidden Items Panel"); });
    ASSERT_TRUE(desktop_.click("Velmo.Toggle", MouseButton::right));
    EXPECT_EQ(selectedTab(), "panel");
    EXPECT_EQ(windows().size(), 1U);
}

TEST_F(AppDelegateTest, OpensThePanelFromTheSettings) {
    completeFirstLaunch();
    desktop_.screenCapture().setGranted(false);
    AppDelegate delegate(desktop_.platform());
    delegate.applicationDidFinishLaunching();
    delegate.openSettings(SettingsTab::general);
    // Without access the command asks for it.
    press(windows().front()->content(), "Open the panel now");
    EXPECT_EQ(desktop_.screenCapture().requestCount(), 1U);
}

TEST_F(AppDelegateTest, OpensNoPanelBeforeLaunchingHasFinished) {
    desktop_.screenCapture().setGranted(false);
    AppDelegate delegate(desktop_.platform());
    delegate.openSettings(SettingsTab::panel);
    press(windows().front()->content(), "Open the panel now");
    EXPECT_EQ(desktop_.screenCapture().requestCount(), 0U);
}

using AppDelegateDeathTest = AppDelegateTest;

TEST_F(AppDelegateDeathTest, TakesCommandsOnItsOwnThreadAlone) {
    AppDelegate delegate(desktop_.platform());
    delegate.applicationPerform(ApplicationCommand::toggle);
    EXPECT_DEATH(std::thread([&] { delegate.applicationPerform(ApplicationCommand::toggle); }).join(),
                 "Incorrect actor executor assumption");
}

TEST_F(AppDelegateDeathTest, OpensThePanelOnItsOwnThreadAlone) {
    AppDelegate delegate(desktop_.platform());
    delegate.openSettings(SettingsTab::panel);
    const auto pressOpen = [&] { press(windows().front()->content(), "Open the panel now"); };
    pressOpen();
    EXPECT_DEATH(std::thread(pressOpen).join(), "Incorrect actor executor assumption");
}

TEST_F(AppDelegateTest, LeavesNothingBehind) {
    {
        AppDelegate delegate(desktop_.platform());
        delegate.applicationDidFinishLaunching();
        delegate.openSettings(SettingsTab::clock);
    }
    EXPECT_TRUE(windows().empty());
    EXPECT_TRUE(desktop_.statusBar().items().empty());
    EXPECT_EQ(desktop_.runLoop().timerCount(), 0U);
}

TEST_F(AppDelegateTest, UsesTheSharedPreferences) {
    AppDelegate delegate(desktop_.platform());
    delegate.applicationDidFinishLaunching();
    Preferences::shared(desktop_.userDefaults())->toggleIconStyle.set(ToggleIconStyle::eye);
    desktop_.advance(0);
    const auto image = desktop_.statusBar().item("Velmo.Toggle")->button()->image();
    ASSERT_TRUE(image);
    EXPECT_EQ(std::get<Symbol>(image->content).name, "eye.slash");
}

TEST_F(AppDelegateTest, FindsEverythingAgainAfterARestart) {
    for (int launch = 0; launch < 3; ++launch) {
        AppDelegate delegate(desktop_.platform());
        delegate.applicationDidFinishLaunching();
        EXPECT_EQ(desktop_.statusBar().items().size(), 3U);
        Preferences::shared(desktop_.userDefaults())->rehideDelay.set(7 + launch);
    }
    EXPECT_TRUE(desktop_.statusBar().items().empty());
    EXPECT_EQ(Preferences(desktop_.userDefaults()).rehideDelay.value(), 9);
}

}  // namespace
}  // namespace velmo
