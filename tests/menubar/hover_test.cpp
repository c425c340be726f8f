#include "menubar/hover_target.h"
#include "menubar/manager_test.h"

namespace velmo {
namespace {

class Hover : public ManagerTest {
protected:
    Hover() {
        desktop_.userDefaults().setBool(true, "showOnHover");
        start();
    }

    void enterToggle() {
        const Rect frame = *button(toggle).frameOnScreen();
        desktop_.movePointer({frame.midX(), frame.midY()});
    }
    void leaveToggle() { desktop_.movePointer(outside); }
};

TEST_F(Hover, TracksTheWholeToggle) {
    const auto areas = desktop_.statusBar().trackingAreas();
    ASSERT_EQ(areas.size(), 1U);
    EXPECT_EQ(areas[0].first, 641U);
    EXPECT_EQ(areas[0].second, desktop_.statusBar().item(toggle));
}

TEST_F(Hover, DoesNotRevealWhereThePointerLeavesBefore) {
    enterToggle();
    desktop_.advance(0.249);
    leaveToggle();
    EXPECT_EQ(desktop_.runLoop().timerCount(), 0U);
    desktop_.advance(1);
    EXPECT_EQ(level(), RevealLevel::none);
}

TEST_F(Hover, CountsFromTheLastEntering) {
    enterToggle();
    desktop_.advance(0.2);
    leaveToggle();
    enterToggle();
    EXPECT_EQ(desktop_.runLoop().timerCount(), 1U);
    desktop_.advance(0.249);
    EXPECT_EQ(level(), RevealLevel::none);
    desktop_.advance(0.001);
    EXPECT_EQ(level(), RevealLevel::hidden);
}

TEST_F(Hover, OnlyRestartsTheTimerWhereTheSectionIsShown) {
    reveal(RevealLevel::hidden);
    desktop_.advance(3);
    // Applying the level would set it right.
    desktop_.statusBar().item(hiddenDivider)->setLength(13);
    enterToggle();
    desktop_.advance(0.25);
    EXPECT_EQ(level(), RevealLevel::hidden);
    EXPECT_EQ(length(hiddenDivider), 13);
    EXPECT_EQ(nextTimer(), 5);
    EXPECT_EQ(desktop_.runLoop().timerCount(), 1U);
}

TEST_F(Hover, KeepsTheItemsShownWhileThePointerStays) {
    enterToggle();
    desktop_.advance(60);
    EXPECT_EQ(level(), RevealLevel::hidden);
    leaveToggle();
    desktop_.advance(1);
    EXPECT_EQ(level(), RevealLevel::none);
}

TEST_F(Hover, ForThePanelDoesNotChangeTheLevel) {
    preferences_->clickAction.set(ClickAction::showPanel);
    enterToggle();
    desktop_.advance(0.25);
    EXPECT_EQ(level(), RevealLevel::none);
    reveal(RevealLevel::none);
    EXPECT_EQ(desktop_.runLoop().timerCount(), 0U);
}

TEST_F(Hover, ReadsTheClickActionWhenItReveals) {
    enterToggle();
    preferences_->clickAction.set(ClickAction::showPanel);
    desktop_.advance(0.2);
    preferences_->clickAction.set(ClickAction::revealInMenuBar);
    desktop_.advance(0.05);
    EXPECT_EQ(level(), RevealLevel::hidden);
}

TEST_F(Hover, EndsWithItsPreference) {
    preferences_->showOnHover.set(false);
    EXPECT_EQ(desktop_.statusBar().trackingAreas().size(), 1U);
    desktop_.runLoop().runPosted();
    EXPECT_TRUE(desktop_.statusBar().trackingAreas().empty());
    enterToggle();
    EXPECT_EQ(desktop_.runLoop().timerCount(), 0U);
    leaveToggle();
    preferences_->showOnHover.set(true);
    desktop_.runLoop().runPosted();
    EXPECT_EQ(desktop_.statusBar().trackingAreas().size(), 1U);
    enterToggle();
    EXPECT_EQ(nextTimer(), 0.25);
}

TEST_F(Hover, StillRevealsWhereItIsSwitchedOffMeanwhile) {
    enterToggle();
    preferences_->showOnHover.set(false);
    desktop_.advance(0.25);
    EXPECT_EQ(level(), RevealLevel::hidden);
}

TEST_F(Hover, EndsThePendingRevealWhenThePointerEntersAgain) {
    enterToggle();
    desktop_.advance(0.1);
    // Nobody hears of the pointer's leaving.
    preferences_->showOnHover.set(false);
    desktop_.runLoop().runPosted();
    leaveToggle();
    EXPECT_EQ(nextTimer(), 0.15);
    preferences_->showOnHover.set(true);
    desktop_.runLoop().runPosted();
    enterToggle();
    EXPECT_EQ(desktop_.runLoop().timerCount(), 1U);
    EXPECT_EQ(nextTimer(), 0.25);
    desktop_.advance(0.249);
    EXPECT_EQ(level(), RevealLevel::none);
    desktop_.advance(0.001);
    EXPECT_EQ(level(), RevealLevel::hidden);
}

TEST(HoverTarget, CallsWhatIsSet) {
    HoverTarget target;
    target.mouseEnteredWith({EventType::mouseEntered});
    target.mouseExitedWith({EventType::mouseExited});
    std::string calls;
    target.onEnter = [&calls] { calls += 'e'; };
    target.onExit = [&calls] { calls += 'x'; };
    target.mouseEnteredWith({EventType::mouseEntered});
    target.mouseExitedWith({EventType::mouseExited});
    EXPECT_EQ(calls, "ex");
}

TEST_F(ManagerTest, IgnoresHoveringWhereItIsOff) {
    start();
    EXPECT_TRUE(desktop_.statusBar().trackingAreas().empty());
    const Rect frame = *button(toggle).frameOnScreen();
    desktop_.movePointer({frame.midX(), frame.midY()});
    desktop_.advance(1);
    EXPECT_EQ(level(), RevealLevel::none);
}

}  // namespace
}  // namespace velmo
