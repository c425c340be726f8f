#include "scenarios/scenario_test.h"

#include <algorithm>
#include <stdexcept>

namespace velmo {
namespace {

using StartScenario = ScenarioTest;
using ToggleScenario = ScenarioTest;
using DividerScenario = ScenarioTest;

TEST_F(StartScenario, HidesBothSections) {
    run([&] {
        EXPECT_EQ(level(), RevealLevel::none);
        EXPECT_EQ(desktop_->symbol(toggle), "chevron.left");
        EXPECT_TRUE(desktop_->isVisible(hiddenDivider));
        EXPECT_FALSE(desktop_->isVisible(alwaysHiddenDivider));
        EXPECT_FALSE(desktop_->hasItem(clock));
    });
}

TEST_F(StartScenario, LeavesNothingBehindAtTheEnd) {
    for (const char* key : {"showOnHover", "showOnScroll", "alwaysHiddenEnabled", "clockEnabled"})
        desktop_->store(key, true);
    const std::string binding = R"({"keyCode":40,"modifiers":1048576,"display":"⌘K"})";
    desktop_->store("hotkey", Data(binding.begin(), binding.end()));
    run([&] {
        EXPECT_TRUE(desktop_->hasItem(clock));
        const auto left = desktop_->leftBehind();
        EXPECT_EQ(std::count(left.begin(), left.end(), "shortcut"), 1);
    });
    EXPECT_EQ(desktop_->leftBehind(), Titles{});
}

TEST_F(StartScenario, SetsTheToolTips) {
    run([&] {
        EXPECT_EQ(desktop_->toolTip(toggle),
                  "Velmo — click to show or hide menu bar items, ⌥-click for always-hidden items");
        EXPECT_EQ(desktop_->toolTip(hiddenDivider),
                  "Velmo divider — ⌘-drag icons to the left of this to hide them");
        EXPECT_EQ(
            desktop_->toolTip(alwaysHiddenDivider),
            "Velmo always-hidden divider — icons left of this stay hidden unless you ⌥-click the toggle");
    });
}

TEST_F(ToggleScenario, ShowsAndHides) {
    run([&] {
        desktop_->click(toggle);
        EXPECT_EQ(level(), RevealLevel::hidden);
        EXPECT_EQ(desktop_->symbol(toggle), "chevron.right");
        desktop_->click(toggle);
        EXPECT_EQ(level(), RevealLevel::none);
        EXPECT_EQ(desktop_->symbol(toggle), "chevron.left");
        reveal(RevealLevel::all);
        desktop_->click(toggle);
        EXPECT_EQ(level(), RevealLevel::none);
    });
}

TEST_F(ToggleScenario, WithOptionShowsEverythingOrHides) {
    run([&] {
        desktop_->click(toggle, modifier::option);
        EXPECT_EQ(level(), RevealLevel::all);
        desktop_->click(toggle, modifier::option);
        EXPECT_EQ(level(), RevealLevel::none);
        reveal(RevealLevel::hidden);
        desktop_->click(toggle, modifier::option);
        EXPECT_EQ(level(), RevealLevel::all);
    });
}

TEST_F(ToggleScenario, HeedsOptionAmongOtherModifiers) {
    run([&] {
        desktop_->click(toggle, modifier::option | modifier::shift | modifier::capsLock);
        EXPECT_EQ(level(), RevealLevel::all);
    });
}

TEST_F(ToggleScenario, DoesNotMindOtherModifiers) {
    run([&] {
        for (const auto flag : {modifier::capsLock, modifier::shift, modifier::control, modifier::command,
                                modifier::numericPad, modifier::function}) {
            reveal(RevealLevel::none);
            desktop_->click(toggle, flag);
            EXPECT_EQ(level(), RevealLevel::hidden) << flag;
        }
    });
}

TEST_F(ToggleScenario, HasTheStoredIcon) {
    desktop_->store("toggleIconStyle", std::string("eye"));
    run([&] {
        EXPECT_EQ(desktop_->symbol(toggle), "eye.slash");
        desktop_->click(toggle);
        EXPECT_EQ(desktop_->symbol(toggle), "eye");
    });
}

TEST_F(DividerScenario, HidesEverythingWhereItIsClicked) {
    desktop_->store("alwaysHiddenEnabled", true);
    run([&] {
        for (const char* divider : {hiddenDivider, alwaysHiddenDivider}) {
            reveal(RevealLevel::all);
            EXPECT_TRUE(desktop_->isEnabled(divider)) << divider;
            desktop_->click(divider);
            EXPECT_EQ(level(), RevealLevel::none) << divider;
        }
        reveal(RevealLevel::hidden);
        desktop_->click(hiddenDivider, modifier::option);
        EXPECT_EQ(level(), RevealLevel::none);
    });
}

TEST_F(DividerScenario, DoesNothingWhileItHides) {
    desktop_->store("alwaysHiddenEnabled", true);
    run([&] {
        EXPECT_FALSE(desktop_->isEnabled(hiddenDivider));
        desktop_->click(hiddenDivider);
        EXPECT_EQ(level(), RevealLevel::none);
        reveal(RevealLevel::hidden);
        EXPECT_TRUE(desktop_->isEnabled(hiddenDivider));
        EXPECT_FALSE(desktop_->isEnabled(alwaysHiddenDivider));
        desktop_->click(alwaysHiddenDivider);
        EXPECT_EQ(level(), RevealLevel::hidden);
    });
}

TEST_F(DividerScenario, IsThereForTheAlwaysHiddenSectionWhereThatIsOn) {
    desktop_->store("alwaysHiddenEnabled", true);
    run([&] {
        EXPECT_TRUE(desktop_->isVisible(alwaysHiddenDivider));
        EXPECT_EQ(level(), RevealLevel::none);
    });
}

}  // namespace
}  // namespace velmo
