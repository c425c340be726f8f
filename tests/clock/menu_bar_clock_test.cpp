#include "clock/clock_test.h"

namespace velmo {
namespace {

TEST_F(ClockTest, IsNotThereUnlessItIsEnabled) {
    start(false);
    EXPECT_EQ(item(), nullptr);
    EXPECT_EQ(clock_->screenFrame(), std::nullopt);
    EXPECT_EQ(desktop_.runLoop().timerCount(), 0U);
    desktop_.advance(100);
    EXPECT_TRUE(desktop_.statusBar().items().empty());
}

TEST_F(ClockTest, IsThereFromTheStartWhereItIsEnabled) {
    start();
    ASSERT_NE(item(), nullptr);
    EXPECT_EQ(item()->length(), StatusItem::variableLength);
    EXPECT_TRUE(item()->isVisible());
    EXPECT_EQ(title(), "13:04");
}

TEST_F(ClockTest, HasItsNameBeforeItIsShown) {
    desktop_.statusBar().beginJournal();
    start();
    EXPECT_EQ(
        desktop_.statusBar().journal(),
        (std::vector<std::string>{": name Velmo.Clock", "Velmo.Clock: visible", "Velmo.Clock: title 13:04"}))
        << "A system may keep a place and whether it is shown by that name.";
}

TEST_F(ClockTest, IsShownEvenWhereTheSystemRemembersItHidden) {
    desktop_.statusBar().setHidesNewItems(true);
    start();
    EXPECT_TRUE(item()->isVisible());
}

TEST_F(ClockTest, HasDigitsOfOneWidth) {
    start();
    EXPECT_EQ(button().font(), (Font{TextStyle::body, {}, FontWeight::regular, true, false}));
}

TEST_F(ClockTest, ListensToTheReleaseOfBothButtons) {
    start();
    EXPECT_EQ(button().actionMask(), EventMask{20});
    EXPECT_EQ(button().toolTip(), "velmo clock — click for a calendar, ⌘-drag to move");
}

TEST_F(ClockTest, TicksEverySecondFromItsStart) {
    preferences_.clockFormat.set("HH:mm:ss");
    desktop_.advance(0.25);
    start();
    EXPECT_EQ(title(), "13:04:09");
    desktop_.advance(0.999);
    EXPECT_EQ(title(), "13:04:09");
    desktop_.advance(0.001);
    EXPECT_EQ(title(), "13:04:10");
    desktop_.advance(60);
    EXPECT_EQ(title(), "13:05:10");
    EXPECT_EQ(desktop_.runLoop().timerCount(), 1U);
}

TEST_F(ClockTest, MayBeATenthOfASecondLate) {
    start();
    EXPECT_EQ(desktop_.runLoop().tolerances(), std::vector<Seconds>{0.1});
}

TEST_F(ClockTest, AsksForOneDateATick) {
    preferences_.clockFormat.set("HH:mm:ss");
    start();
    const int before = desktop_.dates().stringCount();
    desktop_.advance(10);
    EXPECT_EQ(title(), "13:04:19");
    EXPECT_EQ(desktop_.dates().stringCount(), before + 10);
}

TEST_F(ClockTest, DoesItsTickInALaterTurn) {
    preferences_.clockFormat.set("HH:mm:ss");
    start();
    desktop_.runLoop().runPosted();
    desktop_.runLoop().fireNextTimer();
    EXPECT_EQ(title(), "13:04:09");
    desktop_.runLoop().runPosted();
    EXPECT_EQ(title(), "13:04:10");
}

TEST_F(ClockTest, WritesTheTitleOnlyWhereItChanges) {
    start();
    EXPECT_EQ(button().titleWrites(), 1);
    desktop_.advance(50);
    EXPECT_EQ(button().titleWrites(), 1);
    desktop_.advance(1);
    EXPECT_EQ(title(), "13:05");
    EXPECT_EQ(button().titleWrites(), 2);
    desktop_.advance(600);
    EXPECT_EQ(button().titleWrites(), 12);
}

TEST_F(ClockTest, UsesOneFormatterForTheWholeRun) {
    start();
    desktop_.advance(100);
    setEnabled(false);
    setEnabled(true);
    setFormat("mm");
    EXPECT_EQ(desktop_.dates().formatterCount(), 1);
}

TEST_F(ClockTest, CallsOnEnabledWhereTheUserSwitchesItOn) {
    start(false);
    setEnabled(true);
    EXPECT_EQ(enabledCount_, 1);
    EXPECT_EQ(title(), "13:04");
}

TEST_F(ClockTest, DoesNotCallOnEnabledAtTheStart) {
    start();
    desktop_.advance(10);
    EXPECT_EQ(enabledCount_, 0);
}

TEST_F(ClockTest, HasItsItemWhenItCallsOnEnabled) {
    start(false);
    std::string seen;
    clock_->onEnabled = [&] { seen = title(); };
    setEnabled(true);
    EXPECT_EQ(seen, "13:04");
}

TEST_F(ClockTest, FollowsThePreferenceInALaterTurn) {
    start(false);
    preferences_.clockEnabled.set(true);
    EXPECT_EQ(item(), nullptr);
    desktop_.runLoop().runPosted();
    EXPECT_NE(item(), nullptr);
    preferences_.clockEnabled.set(false);
    EXPECT_NE(item(), nullptr);
    desktop_.runLoop().runPosted();
    EXPECT_EQ(item(), nullptr);
    EXPECT_EQ(desktop_.runLoop().timerCount(), 0U);
}

TEST_F(ClockTest, MakesNoSecondItemWhereItIsSwitchedOnTwice) {
    start(false);
    setEnabled(true);
    setEnabled(true);
    clock_->start(true);
    EXPECT_EQ(desktop_.statusBar().items().size(), 1U);
    EXPECT_EQ(desktop_.runLoop().timerCount(), 1U);
    EXPECT_EQ(enabledCount_, 1);
}

TEST_F(ClockTest, SurvivesBeingSwitchedOffTwice) {
    start();
    clock_->stop();
    clock_->stop();
    setEnabled(false);
    EXPECT_EQ(item(), nullptr);
}

TEST_F(ClockTest, TakesAnotherPatternAtOnce) {
    start();
    desktop_.advance(0.5);
    preferences_.clockFormat.set("H.mm");
    EXPECT_EQ(title(), "13:04");
    desktop_.runLoop().runPosted();
    EXPECT_EQ(title(), "13.04");
}

TEST_F(ClockTest, TakesAnotherPatternEvenWhereItGivesTheSameText) {
    start();
    setFormat("H:mm");
    EXPECT_EQ(title(), "13:04");
    EXPECT_EQ(button().titleWrites(), 2);
}

TEST_F(ClockTest, TakesTheSamePatternOnceMore) {
    start();
    setEnabled(false);
    setEnabled(true);
    ASSERT_EQ(title(), "");
    setFormat("HH:mm");
    EXPECT_EQ(title(), "13:04");
    EXPECT_EQ(button().titleWrites(), 1);
    setFormat("HH:mm");
    EXPECT_EQ(button().titleWrites(), 2);
}

TEST_F(ClockTest, TakesAPatternThatWasSetWhileItWasOff) {
    start(false);
    setFormat("ss");
    setEnabled(true);
    EXPECT_EQ(title(), "09");
}

TEST_F(ClockTest, FollowsTheTimeZoneAtOnce) {
    start();
    desktop_.advance(0.5);
    desktop_.dates().setSecondsFromUtc(3600);
    EXPECT_EQ(title(), "13:04");
    desktop_.runLoop().runPosted();
    EXPECT_EQ(title(), "14:04");
}

TEST_F(ClockTest, RewritesTheTitleForAnotherTimeZoneOfTheSameTime) {
    start();
    desktop_.dates().setSecondsFromUtc(0);
    desktop_.runLoop().runPosted();
    EXPECT_EQ(button().titleWrites(), 2);
}

TEST_F(ClockTest, StaysEmptyWithAnEmptyPattern) {
    preferences_.clockFormat.set("");
    start();
    desktop_.advance(3);
    desktop_.dates().setSecondsFromUtc(3600);
    setFormat("");
    EXPECT_EQ(button().titleWrites(), 0);
    EXPECT_EQ(title(), "");
}

TEST_F(ClockTest, ShowsNothingOnceThePatternIsCleared) {
    start();
    setFormat("");
    EXPECT_EQ(title(), "");
    desktop_.advance(60);
    EXPECT_EQ(button().titleWrites(), 2);
    setFormat("mm");
    EXPECT_EQ(title(), "05");
}

TEST_F(ClockTest, RefreshesItsTitleOnDemand) {
    start();
    desktop_.runLoop().setNow(dateOf(2025, 7, 5, 14));
    EXPECT_EQ(title(), "13:04");
    clock_->refreshTitle();
    EXPECT_EQ(title(), "14:00");
}

TEST_F(ClockTest, ShowsNothingWhereThePatternCannotBeUsed) {
    desktop_.dates().setRefusesPatterns(true);
    start();
    EXPECT_EQ(button().titleWrites(), 0);
}

TEST_F(ClockTest, StaysBlankUntilTheMinuteChangesWhereItIsSwitchedOffAndOn) {
    start();
    setEnabled(false);
    setEnabled(true);
    EXPECT_EQ(title(), "");
    desktop_.advance(50);
    EXPECT_EQ(title(), "");
    desktop_.advance(1);
    EXPECT_EQ(title(), "13:05");
}

TEST_F(ClockTest, ShowsTheTimeAtOnceWhereItChangedWhileTheClockWasOff) {
    start();
    setEnabled(false);
    desktop_.advance(60);
    setEnabled(true);
    EXPECT_EQ(title(), "13:05");
}

TEST_F(ClockTest, WorksWithoutAButton) {
    desktop_.statusBar().setRefusesButtons(true);
    start();
    desktop_.advance(60);
    clock_->refreshTitle();
    setFormat("mm");
    EXPECT_EQ(desktop_.dates().stringCount(), 0);
    EXPECT_EQ(clock_->screenFrame(), std::nullopt);
    setEnabled(false);
    EXPECT_EQ(item(), nullptr);
}

TEST_F(ClockTest, TellsWhereItIs) {
    start();
    EXPECT_EQ(clock_->screenFrame(), desktop_.statusBar().slot(itemName)->frame);
    EXPECT_TRUE(clock_->screenFrame());
    setEnabled(false);
    EXPECT_EQ(clock_->screenFrame(), std::nullopt);
}

TEST_F(ClockTest, LeavesNothingBehindWhenItIsGone) {
    start();
    click();
    preferences_.clockFormat.set("ss");
    desktop_.dates().setSecondsFromUtc(3600);
    desktop_.runLoop().fireNextTimer();
    clock_.reset();
    EXPECT_EQ(item(), nullptr);
    EXPECT_TRUE(popovers().empty());
    EXPECT_EQ(desktop_.runLoop().timerCount(), 0U);
    desktop_.dates().setSecondsFromUtc(7200);
    setEnabled(true);
    EXPECT_EQ(item(), nullptr);
}

}  // namespace
}  // namespace velmo
