#include "menubar/manager_test.h"

#include <limits>

namespace velmo {
namespace {

using RehideTimer = ManagerTest;

TEST_F(RehideTimer, HidesAfterTheDelay) {
    start();
    clickToggle();
    EXPECT_EQ(nextTimer(), 5);
    desktop_.advance(4.999);
    EXPECT_EQ(level(), RevealLevel::hidden);
    desktop_.advance(0.001);
    EXPECT_EQ(level(), RevealLevel::none);
    EXPECT_EQ(desktop_.runLoop().timerCount(), 0U);
}

TEST_F(RehideTimer, RunsNoShorterThanOneSecond) {
    start();
    constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();
    for (const double delay : {0.2, 0.0, -7.0, 0.999, 1.0, notANumber}) {
        preferences_->rehideDelay.set(delay);
        reveal(RevealLevel::hidden);
        desktop_.advance(0);
        EXPECT_EQ(nextTimer(), 1) << delay;
    }
    preferences_->rehideDelay.set(1.001);
    reveal(RevealLevel::hidden);
    EXPECT_EQ(nextTimer(), 1.001);
}

TEST_F(RehideTimer, DoesNotRunWithoutAutomaticHiding) {
    desktop_.userDefaults().setBool(false, "autoRehide");
    start();
    clickToggle();
    EXPECT_EQ(desktop_.runLoop().timerCount(), 0U);
    desktop_.advance(1000);
    EXPECT_EQ(level(), RevealLevel::hidden);
}

TEST_F(RehideTimer, DoesNotRunWhileEverythingIsHidden) {
    start();
    clickToggle();
    clickToggle();
    EXPECT_EQ(desktop_.runLoop().timerCount(), 0U);
}

TEST_F(RehideTimer, StartsAnewAtEachChange) {
    start();
    clickToggle();
    desktop_.advance(4);
    optionClickToggle();
    EXPECT_EQ(desktop_.runLoop().timerCount(), 1U);
    desktop_.advance(4.999);
    EXPECT_EQ(level(), RevealLevel::all);
    desktop_.advance(0.001);
    EXPECT_EQ(level(), RevealLevel::none);
}

TEST_F(RehideTimer, TriesAgainEachSecondWhileThePointerIsInTheMenuBar) {
    start();
    clickToggle();
    desktop_.movePointer(inMenuBar);
    desktop_.advance(5);
    for (int i = 0; i < 50; ++i) {
        EXPECT_EQ(level(), RevealLevel::hidden);
        EXPECT_EQ(nextTimer(), 1);
        EXPECT_EQ(desktop_.runLoop().timerCount(), 1U);
        desktop_.advance(1);
    }
    desktop_.movePointer(outside);
    desktop_.advance(0.999);
    EXPECT_EQ(level(), RevealLevel::hidden);
    desktop_.advance(0.001);
    EXPECT_EQ(level(), RevealLevel::none);
}

TEST_F(RehideTimer, TriesAgainWhileAMenuOfAnotherApplicationIsOpen) {
    start();
    clickToggle();
    const auto menu = desktop_.windowServer().addMenu(7, {0, 26, 100, 200});
    desktop_.advance(5);
    EXPECT_EQ(level(), RevealLevel::hidden);
    EXPECT_EQ(nextTimer(), 1);
    desktop_.windowServer().removeWindow(menu);
    desktop_.advance(1);
    EXPECT_EQ(level(), RevealLevel::none);
}

TEST_F(RehideTimer, DoesNotMindAMenuOfTheProgramItself) {
    start();
    clickToggle();
    desktop_.windowServer().addMenu(desktop_.processInfo().processIdentifier(), {0, 26, 100, 200});
    desktop_.advance(5);
    EXPECT_EQ(level(), RevealLevel::none);
}

TEST_F(RehideTimer, LooksForMenusOnlyWhenItFires) {
    desktop_.userDefaults().setBool(true, "showOnScroll");
    start();
    desktop_.movePointer(inMenuBar);
    for (int i = 0; i < 20; ++i)
        scroll(0, 10);
    clickToggle();
    EXPECT_EQ(desktop_.windowServer().listCount(), 0U);
    desktop_.movePointer(outside);
    reveal(RevealLevel::hidden);
    desktop_.advance(5);
    EXPECT_EQ(desktop_.windowServer().listCount(), 1U);
}

TEST_F(RehideTimer, DoesNothingWhereAllIsHiddenAlready) {
    start();
    desktop_.statusBar().item(hiddenDivider)->setLength(13);
    manager_->scheduleRehideTimer(3);
    desktop_.advance(3);
    EXPECT_EQ(level(), RevealLevel::none);
    EXPECT_EQ(length(hiddenDivider), 13);
    EXPECT_EQ(desktop_.runLoop().timerCount(), 0U);
}

TEST_F(RehideTimer, DoesNotAskAgainWhetherToHideAutomatically) {
    desktop_.userDefaults().setBool(false, "autoRehide");
    start();
    clickToggle();
    manager_->scheduleRehideTimer(3);
    desktop_.advance(3);
    EXPECT_EQ(level(), RevealLevel::none);
}

TEST_F(RehideTimer, LeavesAPendingTimerAloneWhenAnotherIsScheduled) {
    start();
    clickToggle();
    manager_->scheduleRehideTimer(7);
    EXPECT_EQ(desktop_.runLoop().timerCount(), 2U);
    desktop_.advance(5);
    EXPECT_EQ(level(), RevealLevel::none);
}

TEST_F(RehideTimer, ReadsTheDelayAfreshAtEachStart) {
    start();
    clickToggle();
    preferences_->rehideDelay.set(9);
    EXPECT_EQ(nextTimer(), 5);
    manager_->restartRehideTimer();
    EXPECT_EQ(nextTimer(), 9);
}

TEST_F(RehideTimer, LeavesTheHidingToALaterTurn) {
    start();
    clickToggle();
    ASSERT_TRUE(desktop_.runLoop().fireNextTimer());
    EXPECT_EQ(level(), RevealLevel::hidden);
    EXPECT_EQ(desktop_.runLoop().postedCount(), 1U);
    EXPECT_EQ(desktop_.runLoop().timerCount(), 0U);
    desktop_.runLoop().runPosted();
    EXPECT_EQ(level(), RevealLevel::none);
}

TEST_F(RehideTimer, LooksAtThePointerInThatLaterTurn) {
    start();
    clickToggle();
    ASSERT_TRUE(desktop_.runLoop().fireNextTimer());
    desktop_.movePointer(inMenuBar);
    desktop_.runLoop().runPosted();
    EXPECT_EQ(level(), RevealLevel::hidden);
    EXPECT_EQ(nextTimer(), 1);
}

}  // namespace
}  // namespace velmo
