#include "menubar/manager_test.h"

namespace velmo {
namespace {

using ToggleClick = ManagerTest;
using DividerClick = ManagerTest;

TEST_F(ToggleClick, WithOptionMovesToAllEvenWithThatSectionOff) {
    start();
    ASSERT_FALSE(preferences_->alwaysHiddenEnabled.value());
    optionClickToggle();
    EXPECT_EQ(level(), RevealLevel::all);
    clickToggle();
    EXPECT_EQ(level(), RevealLevel::none);
}

TEST_F(ToggleClick, WithTheRightButtonChangesNothing) {
    start();
    for (const auto wanted : {RevealLevel::none, RevealLevel::hidden, RevealLevel::all}) {
        reveal(wanted);
        for (const auto flags : {ModifierFlags{0}, modifier::option}) {
            ASSERT_TRUE(desktop_.click(toggle, MouseButton::right, flags));
            EXPECT_EQ(level(), wanted);
        }
    }
}

TEST_F(ToggleClick, ForThePanelDoesNotChangeTheLevel) {
    start();
    preferences_->clickAction.set(ClickAction::showPanel);
    clickToggle();
    EXPECT_EQ(level(), RevealLevel::none);
    optionClickToggle();
    EXPECT_EQ(level(), RevealLevel::all);
    clickToggle();
    EXPECT_EQ(level(), RevealLevel::all);
    optionClickToggle();
    EXPECT_EQ(level(), RevealLevel::none);
}

TEST_F(ToggleClick, CountsAtTheReleaseOnly) {
    start();
    desktop_.press(toggle);
    EXPECT_EQ(level(), RevealLevel::none);
    desktop_.release(hiddenDivider);
    desktop_.release(toggle);
    EXPECT_EQ(level(), RevealLevel::none);
    clickToggle();
    EXPECT_EQ(level(), RevealLevel::hidden);
}

TEST_F(DividerClick, IsIgnoredByTheManagerTooWhileTheDividerIsExpanded) {
    start();
    reveal(RevealLevel::hidden);
    ControlItem divider(ControlItem::Kind::divider, "Test.Divider", desktop_.platform());
    divider.isExpanded = true;
    manager_->handleDividerClick(divider, {EventType::leftMouseUp});
    EXPECT_EQ(level(), RevealLevel::hidden);
    divider.isExpanded = false;
    manager_->handleDividerClick(divider, {EventType::leftMouseUp});
    EXPECT_EQ(level(), RevealLevel::none);
}

TEST_F(DividerClick, WithTheRightButtonChangesNothing) {
    start();
    reveal(RevealLevel::hidden);
    ASSERT_TRUE(desktop_.click(hiddenDivider, MouseButton::right));
    EXPECT_EQ(level(), RevealLevel::hidden);
}

TEST_F(DividerClick, DoesNotRestartTheTimerWhereNothingIsShown) {
    start();
    ControlItem divider(ControlItem::Kind::divider, "Test.Divider", desktop_.platform());
    manager_->scheduleRehideTimer(45);
    manager_->handleDividerClick(divider, {EventType::leftMouseUp});
    EXPECT_EQ(nextTimer(), 45);
}

}  // namespace
}  // namespace velmo
