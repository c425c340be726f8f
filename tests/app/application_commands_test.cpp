#include "app/app_delegate.h"

#include "platform/simulated/simulated_desktop.h"

#include <gtest/gtest.h>

namespace velmo {
namespace {

using Call = SimulatedApplication::Call;

class ApplicationCommands : public testing::Test {
protected:
    ApplicationCommands() {
        desktop_.userDefaults().setBool(true, "hasCompletedFirstLaunch");
        desktop_.application().setDelegate(&delegate_);
    }

    void launch() { desktop_.application().run(); }
    void perform(ApplicationCommand command) { desktop_.application().perform(command); }
    RevealLevel level() const { return delegate_.menuBarManager()->revealLevel(); }
    bool settingsAreShown() {
        const auto& windows = desktop_.windows().windows();
        return !windows.empty() && windows.front()->isVisible();
    }

    SimulatedDesktop desktop_;
    AppDelegate delegate_{desktop_.platform()};
};

TEST_F(ApplicationCommands, ToggleShowsTheHiddenItemsAndHidesThemAgain) {
    launch();
    ASSERT_EQ(level(), RevealLevel::none);
    perform(ApplicationCommand::toggle);
    EXPECT_EQ(level(), RevealLevel::hidden);
    perform(ApplicationCommand::toggle);
    EXPECT_EQ(level(), RevealLevel::none);
}

TEST_F(ApplicationCommands, ToggleAllShowsEverythingAndHidesIt) {
    launch();
    perform(ApplicationCommand::toggleAll);
    EXPECT_EQ(level(), RevealLevel::all);
    perform(ApplicationCommand::toggleAll);
    EXPECT_EQ(level(), RevealLevel::none);
    perform(ApplicationCommand::toggle);
    perform(ApplicationCommand::toggleAll);
    EXPECT_EQ(level(), RevealLevel::all);
    perform(ApplicationCommand::toggle);
    EXPECT_EQ(level(), RevealLevel::none);
}

TEST_F(ApplicationCommands, WhatACommandHasShownHidesByItself) {
    launch();
    perform(ApplicationCommand::toggle);
    desktop_.advance(4.99);
    EXPECT_EQ(level(), RevealLevel::hidden);
    desktop_.advance(0.02);
    EXPECT_EQ(level(), RevealLevel::none);
}

TEST_F(ApplicationCommands, PanelAsksForTheAccessThatItLacks) {
    launch();
    desktop_.screenCapture().setGranted(false);
    perform(ApplicationCommand::panel);
    EXPECT_EQ(desktop_.screenCapture().requestCount(), 1U);
    EXPECT_EQ(level(), RevealLevel::none);
}

TEST_F(ApplicationCommands, PanelRevealsForItsPicturesAndHidesAgain) {
    launch();
    perform(ApplicationCommand::panel);
    desktop_.runLoop().runPosted();
    EXPECT_EQ(level(), RevealLevel::hidden);
    desktop_.advance(0.349);
    EXPECT_EQ(level(), RevealLevel::hidden);
    desktop_.advance(0.001);
    EXPECT_EQ(level(), RevealLevel::none);
}

TEST_F(ApplicationCommands, SettingsOpenInFront) {
    launch();
    perform(ApplicationCommand::settings);
    EXPECT_TRUE(settingsAreShown());
    EXPECT_EQ(desktop_.application().calls().back(), Call::activate);
    EXPECT_EQ(level(), RevealLevel::none);
}

TEST_F(ApplicationCommands, QuitTerminates) {
    launch();
    ASSERT_NE(desktop_.application().calls().back(), Call::terminate);
    perform(ApplicationCommand::quit);
    EXPECT_EQ(desktop_.application().calls().back(), Call::terminate);
}

TEST_F(ApplicationCommands, BeforeLaunchingHasFinishedOnlyQuitDoesAnything) {
    const auto before = desktop_.application().calls();
    for (const auto command : {ApplicationCommand::toggle, ApplicationCommand::toggleAll,
                               ApplicationCommand::panel, ApplicationCommand::settings})
        perform(command);
    EXPECT_EQ(desktop_.application().calls(), before);
    EXPECT_FALSE(settingsAreShown());
    perform(ApplicationCommand::quit);
    EXPECT_EQ(desktop_.application().calls().back(), Call::terminate);
}

}  // namespace
}  // namespace velmo
