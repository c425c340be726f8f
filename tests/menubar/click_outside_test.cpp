#include "menubar/manager_test.h"

namespace velmo {
namespace {

class ClickOutside : public ManagerTest {
protected:
    ClickOutside() {
        desktop_.userDefaults().setBool(false, "autoRehide");
        start();
        clickToggle();
    }
};

TEST_F(ClickOutside, HidesForTheRightButtonToo) {
    optionClickToggle();
    clickElsewhere(MouseButton::right);
    desktop_.advance(0.25);
    EXPECT_EQ(level(), RevealLevel::none);
}

TEST_F(ClickOutside, LooksAfterTheEventIsOver) {
    desktop_.clickAtPointer();
    EXPECT_EQ(desktop_.runLoop().timerCount(), 0U);
    desktop_.movePointer(inMenuBar);
    desktop_.runLoop().runPosted();
    EXPECT_EQ(desktop_.runLoop().timerCount(), 0U);
}

TEST_F(ClickOutside, CountsOnlyPresses) {
    desktop_.pressAtPointer();
    desktop_.runLoop().runPosted();
    desktop_.advance(0.25);
    EXPECT_EQ(level(), RevealLevel::none);
    clickToggle();
    desktop_.releaseAtPointer();
    desktop_.scrollAtPointer(0, 50);
    desktop_.runLoop().runPosted();
    EXPECT_EQ(desktop_.runLoop().timerCount(), 0U);
}

TEST_F(ClickOutside, DoesNothingWhereItIsSwitchedOff) {
    preferences_->hideOnClickOutside.set(false);
    clickElsewhere();
    EXPECT_EQ(desktop_.runLoop().timerCount(), 0U);
}

TEST_F(ClickOutside, StillHidesWhereItIsSwitchedOffMeanwhile) {
    clickElsewhere();
    preferences_->hideOnClickOutside.set(false);
    desktop_.advance(0.25);
    EXPECT_EQ(level(), RevealLevel::none);
}

TEST_F(ClickOutside, DoesNothingWhileAllIsHidden) {
    clickToggle();
    clickElsewhere();
    EXPECT_EQ(desktop_.runLoop().timerCount(), 0U);
    EXPECT_EQ(desktop_.windowServer().listCount(), 0U);
}

TEST_F(ClickOutside, DoesNothingInTheMenuBar) {
    desktop_.movePointer(inMenuBar);
    clickElsewhere();
    EXPECT_EQ(desktop_.runLoop().timerCount(), 0U);
    EXPECT_EQ(desktop_.windowServer().listCount(), 0U);
}

TEST_F(ClickOutside, HidesWhereTheMenuBarIsAway) {
    desktop_.statusBar().setAwayFrom({desktop_.screens().main()->frame});
    desktop_.movePointer(inMenuBar);
    clickElsewhere();
    desktop_.advance(0.25);
    EXPECT_EQ(level(), RevealLevel::none);
}

TEST_F(ClickOutside, StillHidesWhereThePointerEntersTheMenuBarMeanwhile) {
    clickElsewhere();
    desktop_.movePointer(inMenuBar);
    desktop_.advance(0.25);
    EXPECT_EQ(level(), RevealLevel::none);
}

TEST_F(ClickOutside, DoesNothingWhileAMenuOfAnotherApplicationIsOpen) {
    desktop_.windowServer().addMenu(7, {0, 26, 100, 200});
    clickElsewhere();
    EXPECT_EQ(desktop_.runLoop().timerCount(), 0U);
    EXPECT_EQ(level(), RevealLevel::hidden);
}

TEST_F(ClickOutside, DoesNotHideWhereTheClickOpensAMenu) {
    clickElsewhere();
    desktop_.advance(0.2);
    desktop_.windowServer().addMenu(7, {0, 26, 100, 200});
    desktop_.advance(10);
    EXPECT_EQ(level(), RevealLevel::hidden);
}

TEST_F(ClickOutside, DoesNotTouchWhatWasHiddenMeanwhile) {
    clickElsewhere();
    clickToggle();
    const auto listed = desktop_.windowServer().listCount();
    desktop_.advance(0.25);
    EXPECT_EQ(level(), RevealLevel::none);
    EXPECT_EQ(desktop_.windowServer().listCount(), listed);
}

TEST_F(ClickOutside, HidesWhatWasRevealedAnewMeanwhile) {
    clickElsewhere();
    desktop_.advance(0.1);
    clickToggle();
    optionClickToggle();
    EXPECT_EQ(level(), RevealLevel::all);
    desktop_.advance(0.15);
    EXPECT_EQ(level(), RevealLevel::none);
}

TEST_F(ClickOutside, DoesNotCountClicksOnTheOwnItems) {
    desktop_.movePointer({1330, 880});
    ASSERT_NE(desktop_.statusBar().itemAt({1330, 880}), nullptr);
    desktop_.pressAtPointer();
    EXPECT_EQ(desktop_.runLoop().postedCount(), 0U);
}

TEST_F(ClickOutside, DoesNothingOnceTheManagerIsGone) {
    clickElsewhere();
    desktop_.clickAtPointer();
    manager_.reset();
    desktop_.advance(1);
    EXPECT_EQ(desktop_.windowServer().listCount(), 1U);
}

}  // namespace
}  // namespace velmo
