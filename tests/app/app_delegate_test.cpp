#include "app/app_delegate.h"

#include "platform/simulated/simulated_desktop.h"

#include <gtest/gtest.h>

namespace velmo {
namespace {

class AppDelegateTest : public testing::Test {
protected:
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

TEST_F(AppDelegateTest, LeavesNothingToTheSystemAtAReopening) {
    AppDelegate delegate(desktop_.platform());
    desktop_.application().setDelegate(&delegate);
    desktop_.application().run();
    EXPECT_FALSE(desktop_.application().reopen(false));
    EXPECT_FALSE(desktop_.application().reopen(true));
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
