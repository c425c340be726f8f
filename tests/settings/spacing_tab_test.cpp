#include "settings/settings_test.h"

namespace velmo {
namespace {

class SpacingTabTest : public SettingsTest {
protected:
    std::optional<GlobalPreferences::Value> stored(const char* key) {
        return desktop_.globalPreferences().value(key);
    }
};

TEST_F(SpacingTabTest, HasItsSections) {
    open(SettingsTab::spacing);
    EXPECT_EQ(sections(),
              (std::vector<Section>{
                  {"Menu bar item spacing",
                   "Tighter spacing fits more icons beside a notch. macOS applies the new spacing to each "
                   "app when it relaunches, so log out and back in to apply it everywhere at once."},
                  {"", "Shows the standard macOS logout confirmation. Save your work first."}}));
}

TEST_F(SpacingTabTest, OffersThePresetsWithTheirDescriptions) {
    open(SettingsTab::spacing);
    EXPECT_EQ(pickerOf("Spacing").style, PickerStyle::radioGroup);
    EXPECT_EQ(pickerOf("Spacing").options,
              (std::vector<PickerOption>{{"system", "System default", "Apple's standard spacing."},
                                         {"compact", "Compact", "About a third more icons fit."},
                                         {"tight", "Tight", "As dense as the menu bar allows."}}));
    EXPECT_EQ(pickerOf("Spacing").selection, "system");
}

TEST_F(SpacingTabTest, AppliesAPresetAtOnce) {
    open(SettingsTab::spacing);
    choose(shown(), "Spacing", "Tight");
    EXPECT_EQ(stored("NSStatusItemSpacing"), GlobalPreferences::Value(6.0));
    EXPECT_EQ(stored("NSStatusItemSelectionPadding"), GlobalPreferences::Value(6.0));
    runPosted();
    EXPECT_EQ(pickerOf("Spacing").selection, "tight");
    choose(shown(), "Spacing", "System default");
    EXPECT_EQ(stored("NSStatusItemSpacing"), std::nullopt);
    runPosted();
    EXPECT_EQ(pickerOf("Spacing").selection, "system");
}

TEST_F(SpacingTabTest, BeginsWithThePresetInForce) {
    desktop_.globalPreferences().put("NSStatusItemSpacing", 8.0);
    open(SettingsTab::spacing);
    EXPECT_EQ(pickerOf("Spacing").selection, "compact");
}

TEST_F(SpacingTabTest, ReadsThePresetOnce) {
    open(SettingsTab::spacing);
    desktop_.globalPreferences().put("NSStatusItemSpacing", 6.0);
    window().close();
    open(SettingsTab::spacing);
    EXPECT_EQ(pickerOf("Spacing").selection, "system");
}

TEST_F(SpacingTabTest, LogsOut) {
    open(SettingsTab::spacing);
    EXPECT_EQ(rows(1).size(), 1U);
    press(shown(), "Log Out…");
    EXPECT_EQ(desktop_.session().logOutRequests(), 1);
}

}  // namespace
}  // namespace velmo
