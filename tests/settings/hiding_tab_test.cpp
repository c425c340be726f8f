#include "settings/settings_test.h"

#include <limits>

namespace velmo {
namespace {

class HidingTabTest : public SettingsTest {
protected:
    HidingTabTest() { open(SettingsTab::hiding); }

    const View& delayRow() { return shown().children.at(0).children.at(1); }
    std::string delayText() { return textsOf(delayRow()).at(1); }
    void setDelay(double delay) {
        preferences_->rehideDelay.set(delay);
        runPosted();
    }
    void pressKey(std::uint16_t keyCode) {
        Event event{EventType::keyDown, modifier::command};
        event.keyCode = keyCode;
        event.charactersIgnoringModifiers = "a";
        desktop_.events().deliverLocally(event);
        runPosted();
    }
};

TEST_F(HidingTabTest, HasItsSections) {
    EXPECT_EQ(sections(),
              (std::vector<Section>{
                  {"Hide again", ""},
                  {"Show", ""},
                  {"Always hidden",
                   "Adds a second divider  ‖  further left. Icons left of it stay hidden even when you show "
                   "the hidden section. Reveal them with ⌥-click on the toggle."},
                  {"Keyboard shortcuts", ""}}));
}

TEST_F(HidingTabTest, SwitchesTheSettings) {
    expectToggle("Hide items again automatically", preferences_->autoRehide);
    expectToggle("Hide when clicking outside the menu bar", preferences_->hideOnClickOutside);
    expectToggle("Show hidden items when hovering over the toggle", preferences_->showOnHover);
    expectToggle("Show or hide by scrolling on the menu bar", preferences_->showOnScroll);
    expectToggle("Enable an always-hidden section", preferences_->alwaysHiddenEnabled);
}

TEST_F(HidingTabTest, HasItsRowsInTheirOrder) {
    ASSERT_EQ(rows(0).size(), 3U);
    EXPECT_TRUE(says(rows(0)[0], "Hide items again automatically"));
    EXPECT_TRUE(says(rows(0)[1].children.at(0), "After"));
    EXPECT_TRUE(says(rows(0)[2], "Hide when clicking outside the menu bar"));
    ASSERT_EQ(rows(1).size(), 2U);
    EXPECT_TRUE(says(rows(1)[0], "Show hidden items when hovering over the toggle"));
    EXPECT_TRUE(says(rows(1)[1], "Show or hide by scrolling on the menu bar"));
    EXPECT_EQ(rows(2).size(), 1U);
    EXPECT_EQ(rows(3).size(), 2U);
}

TEST_F(HidingTabTest, HasASliderFromOneToThirtySeconds) {
    const auto& slider = std::get<Slider>(delayRow().children.at(1).content);
    EXPECT_EQ(slider.minimum, 1);
    EXPECT_EQ(slider.maximum, 30);
    EXPECT_EQ(slider.step, 1);
    EXPECT_EQ(slider.value, 5);
    EXPECT_EQ(delayText(), "5 s");
}

TEST_F(HidingTabTest, FollowsTheSlider) {
    moveSlider(shown(), "After", 30);
    EXPECT_EQ(preferences_->rehideDelay.value(), 30);
    EXPECT_EQ(desktop_.userDefaults().doubleForKey("rehideDelay"), 30);
    runPosted();
    EXPECT_EQ(delayText(), "30 s");
    EXPECT_EQ(std::get<Slider>(delayRow().children.at(1).content).value, 30);
}

TEST_F(HidingTabTest, ShowsWholeSeconds) {
    setDelay(7.9);
    EXPECT_EQ(delayText(), "7 s");
    setDelay(0.2);
    EXPECT_EQ(delayText(), "0 s");
}

TEST_F(HidingTabTest, ShowsADelayThatMakesNoSense) {
    setDelay(std::numeric_limits<double>::quiet_NaN());
    EXPECT_EQ(delayText(), "0 s");
    setDelay(1e300);
    EXPECT_EQ(delayText(), "1000000000 s");
    setDelay(-std::numeric_limits<double>::infinity());
    EXPECT_EQ(delayText(), "-1000000000 s");
}

TEST_F(HidingTabTest, AlignsTheDelayAtItsEnd) {
    const View& value = delayRow().children.at(2);
    EXPECT_TRUE(modifierOf<Font>(value)->hasMonospacedDigits);
    EXPECT_EQ(modifierOf<Frame>(value), (Frame{.width = 32, .alignment = HorizontalAlignment::trailing}));
}

TEST_F(HidingTabTest, RecordsBothShortcuts) {
    EXPECT_TRUE(says(rows(3)[0].children.at(0), "Show or hide items"));
    EXPECT_TRUE(says(rows(3)[1].children.at(0), "Open the hidden items panel"));
    press(rows(3)[0], "Record Shortcut");
    runPosted();
    EXPECT_TRUE(shows(rows(3)[0], "Press keys… (Esc cancels)"));
    EXPECT_TRUE(shows(rows(3)[1], "Record Shortcut"));
    pressKey(0);
    EXPECT_EQ(preferences_->hotkey.value(), (HotkeyBinding{0, modifier::command, "⌘A"}));
    EXPECT_TRUE(shows(rows(3)[0], "⌘A"));
    press(rows(3)[1], "Record Shortcut");
    pressKey(96);
    EXPECT_EQ(preferences_->panelHotkey.value(), (HotkeyBinding{96, modifier::command, "⌘F5"}));
    press(rows(3)[0], "Remove shortcut");
    runPosted();
    EXPECT_EQ(preferences_->hotkey.value(), std::nullopt);
    EXPECT_TRUE(shows(rows(3)[0], "Record Shortcut"));
    EXPECT_TRUE(shows(rows(3)[1], "⌘F5"));
}

}  // namespace
}  // namespace velmo
