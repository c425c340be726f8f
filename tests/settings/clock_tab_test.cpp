#include "clock/menu_bar_clock.h"
#include "settings/settings_test.h"

namespace velmo {
namespace {

class ClockTabTest : public SettingsTest {
protected:
    ClockTabTest() { open(SettingsTab::clock); }

    void type(const std::string& pattern) {
        edit(shown(), "Pattern", pattern);
        runPosted();
    }
    std::string preset() {
        const Picker& picker = pickerOf("Preset");
        for (const auto& option : picker.options) {
            if (option.tag == picker.selection)
                return option.title;
        }
        return "";
    }
    std::string preview() { return textsOf(*find<LabeledContent>(shown(), "Preview")).at(0); }
};

TEST_F(ClockTabTest, HasItsSections) {
    EXPECT_EQ(sections(),
              (std::vector<Section>{
                  {"velmo clock",
                   "A replacement for Tickwell: a date and time in your own format, with a month calendar "
                   "when clicked. New menu bar items appear at the far left, so velmo reveals its sections "
                   "for a moment. ⌘-drag the clock to where you want it, for example next to the system "
                   "clock."},
                  {"Format", ""},
                  {"",
                   "macOS does not allow removing its own clock, but under Control Center → Clock Options "
                   "you can hide its date and switch it to a small analog style to save space."}}));
}

TEST_F(ClockTabTest, SwitchesTheClock) {
    expectToggle("Show a clock and calendar in the menu bar", preferences_->clockEnabled);
}

TEST_F(ClockTabTest, LooksAtTheTimeEachSecondAndNotLater) {
    EXPECT_EQ(desktop_.runLoop().tolerances(), (std::vector<Seconds>{0, 0})) << "with that of permissions";
}

TEST_F(ClockTabTest, HasItsRowsInTheirOrder) {
    ASSERT_EQ(rows(1).size(), 4U);
    EXPECT_TRUE(says(rows(1)[0], "Preset"));
    EXPECT_TRUE(says(rows(1)[1], "Pattern"));
    EXPECT_TRUE(says(rows(1)[2],
                     "Patterns use the standard date field symbols: EEE weekday, d day, MMM month, HH:mm "
                     "24-hour time, h:mm a 12-hour time, ss seconds, w week number. Text in single quotes is "
                     "shown as is."));
    EXPECT_EQ(rows(1)[2].modifiers,
              (std::vector<Modifier>{Font{TextStyle::caption}, Foreground{{ColorRole::secondary, 1}}}));
    EXPECT_TRUE(says(rows(1)[3], "Preview"));
    EXPECT_EQ(rows(2).size(), 1U);
}

TEST_F(ClockTabTest, OffersThePresetsAndACustomOne) {
    EXPECT_EQ(pickerOf("Preset").style, PickerStyle::menu);
    EXPECT_EQ(
        titlesOf(pickerOf("Preset")),
        (std::vector<std::string>{"Day, date and time", "Day, date and 12-hour time", "Compact day and time",
                                  "Date and time", "Numeric date and time", "Time with seconds",
                                  "Week number, day, date and time", "Date only", "Custom"}));
    EXPECT_EQ(pickerOf("Preset").options.at(5).tag, "HH:mm:ss");
    EXPECT_EQ(pickerOf("Preset").options.back().tag, "custom");
    EXPECT_EQ(preset(), "Day, date and time");
}

TEST_F(ClockTabTest, ShowsThePresetOfThePattern) {
    type("HH:mm:ss");
    EXPECT_EQ(preset(), "Time with seconds");
    type("HH:mm:ssa");
    EXPECT_EQ(preset(), "Custom");
    type("HH:mm:ss");
    EXPECT_EQ(preset(), "Time with seconds");
}

TEST_F(ClockTabTest, ComparesPatternsExactly) {
    type("EEE d MMM HH:mm");
    EXPECT_EQ(preset(), "Custom");
    type("");
    EXPECT_EQ(preset(), "Custom");
    // What the last option is called inside is no pattern of a preset.
    type("custom");
    EXPECT_EQ(preset(), "Custom");
}

TEST_F(ClockTabTest, TakesThePatternOfAPreset) {
    choose(shown(), "Preset", "Compact day and time");
    EXPECT_EQ(preferences_->clockFormat.value(), "d EEE h:mma");
    runPosted();
    EXPECT_EQ(std::get<TextField>(find<TextField>(shown(), "Pattern")->content).text, "d EEE h:mma");
    EXPECT_EQ(preset(), "Compact day and time");
}

TEST_F(ClockTabTest, WritesAChosenPresetTwice) {
    std::vector<std::optional<DefaultsValue>> writes;
    desktop_.userDefaults().setWriteObserver([&writes](const std::string& key, const auto& value) {
        if (key == "clockFormat")
            writes.push_back(value);
    });
    choose(shown(), "Preset", "Time with seconds");
    const std::optional<DefaultsValue> pattern = std::string("HH:mm:ss");
    EXPECT_EQ(writes, (std::vector<std::optional<DefaultsValue>>{pattern, pattern}));
    type("HH");
    EXPECT_EQ(writes.size(), 3U);
}

TEST_F(ClockTabTest, LeavesThePatternForCustom) {
    int writes = 0;
    desktop_.userDefaults().setWriteObserver([&writes](const std::string&, const auto&) { ++writes; });
    choose(shown(), "Preset", "Custom");
    runPosted();
    EXPECT_EQ(preferences_->clockFormat.value(), "EEE d MMM  HH:mm");
    EXPECT_EQ(writes, 0);
    EXPECT_EQ(preset(), "Day, date and time");
}

TEST_F(ClockTabTest, AppliesEachEditAtOnce) {
    edit(shown(), "Pattern", "H");
    EXPECT_EQ(preferences_->clockFormat.value(), "H");
    EXPECT_EQ(desktop_.userDefaults().stringForKey("clockFormat"), "H");
}

TEST_F(ClockTabTest, ShowsThePatternInTheMonospacedBodyFont) {
    const View* field = find<TextField>(shown(), "Pattern");
    EXPECT_EQ(modifierOf<Font>(*field), (Font{.style = TextStyle::body, .isMonospaced = true}));
}

TEST_F(ClockTabTest, PreviewsThePatternEverySecond) {
    type("HH:mm:ss");
    EXPECT_EQ(preview(), "13:04:09");
    desktop_.advance(0.999);
    EXPECT_EQ(preview(), "13:04:09");
    desktop_.advance(0.001);
    EXPECT_EQ(preview(), "13:04:10");
}

TEST_F(ClockTabTest, PreviewsAnotherTimeZoneAtOnceWhileItIsShown) {
    type("HH:mm");
    desktop_.advance(0.5);
    desktop_.dates().setSecondsFromUtc(3600);
    runPosted();
    EXPECT_EQ(preview(), "14:04");
    controller_->show(SettingsTab::general);
    desktop_.advance(0.1);
    const auto before = desktop_.dates().stringCount();
    desktop_.dates().setSecondsFromUtc(7200);
    runPosted();
    EXPECT_EQ(desktop_.dates().stringCount(), before);
}

TEST_F(ClockTabTest, PreviewsAClearedPatternAsEmptyWhileTheClockShowsNothing) {
    const MenuBarClock clock(*preferences_, desktop_.platform());
    preferences_->clockEnabled.set(true);
    runPosted();
    EXPECT_EQ(desktop_.statusBar().item("Velmo.Clock")->button()->title(), "Sat 5 Jul  13:04");
    type("");
    EXPECT_EQ(preview(), "(empty)");
    EXPECT_EQ(desktop_.statusBar().item("Velmo.Clock")->button()->title(), "");
}

TEST_F(ClockTabTest, LetsTimePassOnlyWhileItIsShown) {
    type("ss");
    // The second timer watches the permissions.
    EXPECT_EQ(desktop_.runLoop().timerCount(), 2U);
    controller_->show(SettingsTab::general);
    EXPECT_EQ(desktop_.runLoop().timerCount(), 1U);
    desktop_.advance(5);
    controller_->show(SettingsTab::clock);
    EXPECT_EQ(preview(), "14");
    window().close();
    EXPECT_EQ(desktop_.runLoop().timerCount(), 1U);
    desktop_.advance(5);
    controller_->show(std::nullopt);
    EXPECT_EQ(preview(), "19");
    EXPECT_EQ(desktop_.runLoop().timerCount(), 2U);
}

TEST_F(ClockTabTest, OpensTheOptionsOfTheSystemsClock) {
    press(shown(), "System Clock Options…");
    EXPECT_EQ(
        desktop_.workspace().opened(),
        std::vector<std::string>{"x-apple.systempreferences:com.apple.ControlCenter-Settings.extension"});
}

}  // namespace
}  // namespace velmo
