#include "scenarios/scenario_test.h"

namespace velmo {
namespace {

class TimerScenario : public ScenarioTest {
protected:
    TimerScenario() { desktop_->store("rehideDelay", 1.0); }
};

TEST_F(TimerScenario, HidesAfterTheDelay) {
    run([&] {
        desktop_->click(toggle);
        EXPECT_TRUE(hidesAfter(1));
    });
}

TEST_F(TimerScenario, HidesEverything) {
    run([&] {
        desktop_->click(toggle, modifier::option);
        EXPECT_TRUE(hidesAfter(1));
    });
}

TEST_F(TimerScenario, HidesNothingWithoutAutomaticHiding) {
    desktop_->store("autoRehide", false);
    run([&] {
        desktop_->click(toggle);
        desktop_->wait(1.3);
        EXPECT_EQ(level(), RevealLevel::hidden);
    });
}

TEST_F(TimerScenario, HidesNothingWhileThePointerIsInTheMenuBar) {
    run([&] {
        desktop_->click(toggle);
        desktop_->movePointer(Place::menuBar);
        desktop_->wait(1.1);
        EXPECT_EQ(level(), RevealLevel::hidden);
        desktop_->movePointer(Place::elsewhere);
        // It tries again each second.
        EXPECT_TRUE(hidesAfter(0.9));
    });
}

TEST_F(TimerScenario, HidesNothingWhileAMenuOfAnotherApplicationIsOpen) {
    run([&] {
        desktop_->click(toggle);
        desktop_->setOtherMenuOpen(true);
        desktop_->wait(1.1);
        EXPECT_EQ(level(), RevealLevel::hidden);
        desktop_->setOtherMenuOpen(false);
        EXPECT_TRUE(hidesAfter(0.9));
    });
}

TEST_F(ScenarioTest, AShortcutShowsAndHides) {
    const std::string binding = R"({"keyCode":40,"modifiers":1048576,"display":"⌘K"})";
    desktop_->store("hotkey", Data(binding.begin(), binding.end()));
    run([&] {
        constexpr std::uint32_t command = 0x100;
        EXPECT_FALSE(desktop_->pressShortcut(40, 0x900));
        EXPECT_FALSE(desktop_->pressShortcut(41, command));
        EXPECT_EQ(level(), RevealLevel::none);
        EXPECT_TRUE(desktop_->pressShortcut(40, command));
        EXPECT_EQ(level(), RevealLevel::hidden);
        EXPECT_TRUE(desktop_->pressShortcut(40, command));
        EXPECT_EQ(level(), RevealLevel::none);
        reveal(RevealLevel::all);
        EXPECT_TRUE(desktop_->pressShortcut(40, command));
        EXPECT_EQ(level(), RevealLevel::none);
    });
}

TEST_F(ScenarioTest, AShortcutThatCannotBeReadIsForgotten) {
    const std::string incomplete = R"({"keyCode":40,"modifiers":1048576})";
    const std::string complete = R"({"keyCode":40,"modifiers":1048576,"display":"⌘K"})";
    desktop_->store("hotkey", Data(incomplete.begin(), incomplete.end()));
    desktop_->store("panelHotkey", Data(complete.begin(), complete.end()));
    run([&] {
        EXPECT_FALSE(desktop_->isStored("hotkey"));
        EXPECT_EQ(desktop_->storedData("panelHotkey"), Data(complete.begin(), complete.end()));
    });
}

}  // namespace
}  // namespace velmo
