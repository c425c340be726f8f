#include "menubar/divider_images.h"
#include "menubar/manager_test.h"
#include "menubar/toggle_image.h"

namespace velmo {
namespace {

using Reveal = ManagerTest;

TEST(RevealLevel, IsOrdered) {
    EXPECT_EQ(static_cast<int>(RevealLevel::none), 0);
    EXPECT_EQ(static_cast<int>(RevealLevel::hidden), 1);
    EXPECT_EQ(static_cast<int>(RevealLevel::all), 2);
}

TEST_F(Reveal, ShowsTheHiddenSection) {
    start();
    clickToggle();
    EXPECT_EQ(length(hiddenDivider), 12);
    EXPECT_EQ(button(hiddenDivider).image(), dividerImage());
    EXPECT_TRUE(button(hiddenDivider).isEnabled());
    EXPECT_EQ(length(alwaysHiddenDivider), 10000);
    EXPECT_FALSE(button(alwaysHiddenDivider).isEnabled());
    EXPECT_EQ(button(toggle).image(), toggleImage(true, ToggleIconStyle::chevron));
}

TEST_F(Reveal, ShowsEverything) {
    start();
    optionClickToggle();
    EXPECT_EQ(length(hiddenDivider), 12);
    EXPECT_EQ(length(alwaysHiddenDivider), 12);
    EXPECT_EQ(button(alwaysHiddenDivider).image(), alwaysHiddenDividerImage());
    EXPECT_EQ(button(toggle).image(), toggleImage(true, ToggleIconStyle::chevron));
}

TEST_F(Reveal, HidesEverythingAgain) {
    start();
    reveal(RevealLevel::all);
    clickToggle();
    EXPECT_EQ(length(hiddenDivider), 10000);
    EXPECT_EQ(length(alwaysHiddenDivider), 10000);
    EXPECT_EQ(button(hiddenDivider).image(), std::nullopt);
    EXPECT_EQ(button(toggle).image(), toggleImage(false, ToggleIconStyle::chevron));
}

TEST_F(Reveal, MovesIconsBeforeTheToggleTellsOfIt) {
    start();
    desktop_.statusBar().beginJournal();
    clickToggle();
    EXPECT_EQ(
        desktop_.statusBar().journal(),
        (std::vector<std::string>{
            "Velmo.Divider: length 12", "Velmo.Divider: image", "Velmo.Divider: enabled",
            "Velmo.AlwaysHiddenDivider: no image", "Velmo.AlwaysHiddenDivider: disabled",
            "Velmo.AlwaysHiddenDivider: length 10000", "Velmo.Toggle: image", "Velmo.Toggle: enabled"}));
}

TEST_F(Reveal, KeepsTheTogglesLengthVariable) {
    start();
    for (const auto wanted : {RevealLevel::hidden, RevealLevel::all, RevealLevel::none}) {
        reveal(wanted);
        EXPECT_EQ(length(toggle), -1);
    }
}

TEST_F(Reveal, ReadsTheIconStyleAfreshAtEachApplication) {
    start();
    preferences_->toggleIconStyle.set(ToggleIconStyle::lines);
    manager_->applyRevealLevel();
    EXPECT_EQ(toggleSymbol(), "line.3.horizontal");
}

using ClockPlacement = ManagerTest;

TEST_F(ClockPlacement, RevealsForFortyFiveSecondsEvenWithoutAutomaticHiding) {
    start();
    preferences_->autoRehide.set(false);
    desktop_.advance(0);
    manager_->revealForClockPlacement();
    EXPECT_EQ(level(), RevealLevel::hidden);
    EXPECT_EQ(desktop_.runLoop().timerCount(), 1U);
    desktop_.advance(44.999);
    EXPECT_EQ(level(), RevealLevel::hidden);
    desktop_.advance(0.001);
    EXPECT_EQ(level(), RevealLevel::none);
}

TEST_F(ClockPlacement, RevealsEverythingWhereTheAlwaysHiddenSectionIsOn) {
    desktop_.userDefaults().setBool(true, "alwaysHiddenEnabled");
    start();
    manager_->revealForClockPlacement();
    EXPECT_EQ(level(), RevealLevel::all);
    EXPECT_EQ(nextTimer(), 45);
}

TEST_F(ClockPlacement, LowersWhatIsShownWhereTheAlwaysHiddenSectionIsOff) {
    start();
    reveal(RevealLevel::all);
    manager_->revealForClockPlacement();
    EXPECT_EQ(level(), RevealLevel::hidden);
    EXPECT_EQ(length(alwaysHiddenDivider), 10000);
}

TEST_F(ClockPlacement, ReplacesTheUsualTimer) {
    start();
    clickToggle();
    desktop_.advance(3);
    manager_->revealForClockPlacement();
    EXPECT_EQ(desktop_.runLoop().timerCount(), 1U);
    desktop_.advance(44.9);
    EXPECT_EQ(level(), RevealLevel::hidden);
}

TEST_F(ClockPlacement, WaitsForThePointerToLeaveTheMenuBar) {
    start();
    manager_->revealForClockPlacement();
    desktop_.movePointer(inMenuBar);
    desktop_.advance(45);
    EXPECT_EQ(level(), RevealLevel::hidden);
    EXPECT_EQ(nextTimer(), 1);
    desktop_.movePointer(outside);
    desktop_.advance(1);
    EXPECT_EQ(level(), RevealLevel::none);
}

TEST_F(ClockPlacement, WaitsForAnOpenMenu) {
    start();
    preferences_->autoRehide.set(false);
    desktop_.advance(0);
    manager_->revealForClockPlacement();
    const auto menu = desktop_.windowServer().addMenu(7, {0, 26, 100, 200});
    desktop_.advance(46.5);
    EXPECT_EQ(level(), RevealLevel::hidden);
    desktop_.windowServer().removeWindow(menu);
    desktop_.advance(0.5);
    EXPECT_EQ(level(), RevealLevel::none);
}

TEST_F(ClockPlacement, IsCutShortByAUsualRestart) {
    start();
    manager_->revealForClockPlacement();
    manager_->restartRehideTimer();
    EXPECT_EQ(nextTimer(), 5);
    EXPECT_EQ(desktop_.runLoop().timerCount(), 1U);
}

}  // namespace
}  // namespace velmo
