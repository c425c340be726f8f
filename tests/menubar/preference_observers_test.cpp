#include "menubar/manager_test.h"

namespace velmo {
namespace {

class Observers : public ManagerTest {
protected:
    Observers() { start(); }

    /// Whether setting a preference makes the manager do anything at all.
    bool isQuiet() {
        const bool quiet = desktop_.runLoop().postedCount() == 0;
        desktop_.runLoop().runPosted();
        return quiet;
    }
};

TEST_F(Observers, StayQuietAtTheStart) {
    EXPECT_EQ(desktop_.runLoop().postedCount(), 0U);
}

TEST_F(Observers, StayQuietWhereAPreferenceDoesNotChange) {
    preferences_->showOnHover.set(preferences_->showOnHover.value());
    preferences_->autoRehide.set(preferences_->autoRehide.value());
    preferences_->rehideDelay.set(preferences_->rehideDelay.value());
    preferences_->toggleIconStyle.set(preferences_->toggleIconStyle.value());
    preferences_->alwaysHiddenEnabled.set(preferences_->alwaysHiddenEnabled.value());
    EXPECT_TRUE(isQuiet());
}

TEST_F(Observers, DoNotWatchWhatIsReadAtEachDecision) {
    preferences_->clickAction.set(ClickAction::showPanel);
    preferences_->hideOnClickOutside.set(false);
    preferences_->showOnScroll.set(true);
    preferences_->refreshPanelOnOpen.set(false);
    EXPECT_TRUE(isQuiet());
}

TEST_F(Observers, WaitForTheRunLoop) {
    clickToggle();
    preferences_->autoRehide.set(false);
    EXPECT_EQ(desktop_.runLoop().timerCount(), 1U);
    desktop_.runLoop().runPosted();
    EXPECT_EQ(desktop_.runLoop().timerCount(), 0U);
    preferences_->autoRehide.set(true);
    desktop_.runLoop().runPosted();
    EXPECT_EQ(nextTimer(), 5);
}

TEST_F(Observers, RestartTheTimerWithANewDelay) {
    clickToggle();
    desktop_.advance(3);
    preferences_->rehideDelay.set(8);
    desktop_.runLoop().runPosted();
    EXPECT_EQ(nextTimer(), 8);
    EXPECT_EQ(desktop_.runLoop().timerCount(), 1U);
    preferences_->rehideDelay.set(0.5);
    desktop_.runLoop().runPosted();
    EXPECT_EQ(nextTimer(), 1);
}

TEST_F(Observers, StartNoTimerWhileAllIsHidden) {
    preferences_->rehideDelay.set(8);
    preferences_->autoRehide.set(false);
    preferences_->autoRehide.set(true);
    desktop_.runLoop().runPosted();
    EXPECT_EQ(desktop_.runLoop().timerCount(), 0U);
}

TEST_F(Observers, RebuildTheToggleImageForANewStyle) {
    preferences_->toggleIconStyle.set(ToggleIconStyle::dot);
    EXPECT_EQ(toggleSymbol(), "chevron.left");
    desktop_.runLoop().runPosted();
    EXPECT_EQ(toggleSymbol(), "circle");
    clickToggle();
    desktop_.advance(3);
    preferences_->toggleIconStyle.set(ToggleIconStyle::eye);
    desktop_.runLoop().runPosted();
    EXPECT_EQ(toggleSymbol(), "eye");
    EXPECT_EQ(nextTimer(), 5);
}

TEST_F(Observers, ShowAndHideTheAlwaysHiddenDivider) {
    auto* divider = desktop_.statusBar().item(alwaysHiddenDivider);
    preferences_->alwaysHiddenEnabled.set(true);
    EXPECT_FALSE(divider->isVisible());
    desktop_.runLoop().runPosted();
    EXPECT_TRUE(divider->isVisible());
    EXPECT_EQ(level(), RevealLevel::none);
    preferences_->alwaysHiddenEnabled.set(false);
    desktop_.runLoop().runPosted();
    EXPECT_FALSE(divider->isVisible());
}

TEST_F(Observers, LowerAllToHiddenWhereThatSectionIsSwitchedOff) {
    preferences_->alwaysHiddenEnabled.set(true);
    desktop_.runLoop().runPosted();
    reveal(RevealLevel::all);
    preferences_->alwaysHiddenEnabled.set(false);
    desktop_.runLoop().runPosted();
    EXPECT_EQ(level(), RevealLevel::hidden);
    EXPECT_EQ(length(alwaysHiddenDivider), 10000);
    EXPECT_EQ(desktop_.runLoop().timerCount(), 1U);
}

TEST_F(Observers, KeepAllWhereThatSectionIsSwitchedOn) {
    reveal(RevealLevel::all);
    preferences_->alwaysHiddenEnabled.set(true);
    desktop_.runLoop().runPosted();
    EXPECT_EQ(level(), RevealLevel::all);
}

TEST_F(Observers, KeepHiddenWhereThatSectionIsSwitchedOff) {
    preferences_->alwaysHiddenEnabled.set(true);
    desktop_.runLoop().runPosted();
    reveal(RevealLevel::hidden);
    desktop_.advance(3);
    preferences_->alwaysHiddenEnabled.set(false);
    desktop_.runLoop().runPosted();
    EXPECT_EQ(level(), RevealLevel::hidden);
    EXPECT_EQ(nextTimer(), 5);
}

TEST_F(Observers, DoNothingOnceTheManagerIsGone) {
    preferences_->toggleIconStyle.set(ToggleIconStyle::dot);
    manager_.reset();
    desktop_.runLoop().runPosted();
    preferences_->toggleIconStyle.set(ToggleIconStyle::eye);
    EXPECT_EQ(desktop_.runLoop().postedCount(), 0U);
}

}  // namespace
}  // namespace velmo
