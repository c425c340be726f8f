#include "system/menu_bar_spacing.h"

#include "platform/simulated/simulated_global_preferences.h"
#include "platform/simulated/simulated_session.h"

#include <gtest/gtest.h>

#include <limits>

namespace velmo {
namespace {

using Preset = MenuBarSpacing::Preset;

constexpr const char* spacing = "NSStatusItemSpacing";
constexpr const char* paddingKey = "NSStatusItemSelectionPadding";

class MenuBarSpacingTest : public testing::Test {
protected:
    Preset current() const { return MenuBarSpacing::currentPreset(preferences_); }
    Preset currentWith(const GlobalPreferences::Value& value) {
        preferences_.put(spacing, value);
        return current();
    }

    SimulatedGlobalPreferences preferences_;
};

TEST_F(MenuBarSpacingTest, IsTheSystemsWithoutKeys) {
    EXPECT_EQ(current(), Preset::system);
}

TEST_F(MenuBarSpacingTest, WritesTenForCompact) {
    MenuBarSpacing::apply(Preset::compact, preferences_);
    EXPECT_EQ(preferences_.value(spacing), GlobalPreferences::Value(10.0));
    EXPECT_EQ(preferences_.value(paddingKey), GlobalPreferences::Value(10.0));
    EXPECT_EQ(current(), Preset::compact);
}

TEST_F(MenuBarSpacingTest, WritesSixForTight) {
    MenuBarSpacing::apply(Preset::tight, preferences_);
    EXPECT_EQ(preferences_.value(spacing), GlobalPreferences::Value(6.0));
    EXPECT_EQ(preferences_.value(paddingKey), GlobalPreferences::Value(6.0));
    EXPECT_EQ(current(), Preset::tight);
}

TEST_F(MenuBarSpacingTest, RemovesBothKeysForTheSystems) {
    MenuBarSpacing::apply(Preset::tight, preferences_);
    MenuBarSpacing::apply(Preset::system, preferences_);
    EXPECT_EQ(preferences_.value(spacing), std::nullopt);
    EXPECT_EQ(preferences_.value(paddingKey), std::nullopt);
    EXPECT_EQ(current(), Preset::system);
}

TEST_F(MenuBarSpacingTest, WritesTheSpacingThenThePaddingThenSynchronizes) {
    const std::vector<std::string> order{spacing, paddingKey, "synchronize"};
    for (const Preset preset : MenuBarSpacing::allPresets) {
        SimulatedGlobalPreferences preferences;
        MenuBarSpacing::apply(preset, preferences);
        EXPECT_EQ(preferences.calls(), order);
    }
}

TEST_F(MenuBarSpacingTest, TakesNumbersWrittenByHandForCompact) {
    for (const double number : {8.0, 12.0, 10.0, 5.999, 7.0, 0.0, -6.0, 1e300})
        EXPECT_EQ(currentWith(number), Preset::compact) << number;
    EXPECT_EQ(currentWith(std::numeric_limits<double>::quiet_NaN()), Preset::compact);
}

TEST_F(MenuBarSpacingTest, TakesTheWholePartOfANumber) {
    EXPECT_EQ(currentWith(6.0), Preset::tight);
    EXPECT_EQ(currentWith(6.9), Preset::tight);
}

TEST_F(MenuBarSpacingTest, IsTheSystemsWhereTheValueIsNoNumber) {
    EXPECT_EQ(currentWith(std::string("6")), Preset::system);
    EXPECT_EQ(currentWith(std::string("10")), Preset::system);
}

TEST_F(MenuBarSpacingTest, DoesNotLookAtThePadding) {
    preferences_.put(paddingKey, 6.0);
    EXPECT_EQ(current(), Preset::system);
    preferences_.put(spacing, 10.0);
    EXPECT_EQ(current(), Preset::compact);
}

TEST_F(MenuBarSpacingTest, KeepsSilentAboutAWriteThatDidNotTake) {
    preferences_.put(spacing, 10.0);
    preferences_.setRefuses(true);
    MenuBarSpacing::apply(Preset::tight, preferences_);
    EXPECT_EQ(current(), Preset::compact);
}

TEST_F(MenuBarSpacingTest, AsksTheSystemToLogOut) {
    SimulatedSession session;
    MenuBarSpacing::logOut(session);
    EXPECT_EQ(session.logOutRequests(), 1);
}

TEST(MenuBarSpacingPreset, HasItsNamesAndDescriptions) {
    struct Row {
        Preset preset;
        const char* rawValue;
        const char* displayName;
        const char* description;
    };
    const std::array<Row, 3> rows{{
        {Preset::system, "system", "System default", "Apple's standard spacing."},
        {Preset::compact, "compact", "Compact", "About a third more icons fit."},
        {Preset::tight, "tight", "Tight", "As dense as the menu bar allows."},
    }};
    for (std::size_t i = 0; i < rows.size(); ++i) {
        EXPECT_EQ(MenuBarSpacing::allPresets.at(i), rows[i].preset);
        EXPECT_EQ(MenuBarSpacing::rawValue(rows[i].preset), rows[i].rawValue);
        EXPECT_EQ(MenuBarSpacing::presetFromRawValue(rows[i].rawValue), rows[i].preset);
        EXPECT_EQ(MenuBarSpacing::displayName(rows[i].preset), rows[i].displayName);
        EXPECT_EQ(MenuBarSpacing::description(rows[i].preset), rows[i].description);
    }
}

TEST(MenuBarSpacingPreset, IsAbsentForOtherTexts) {
    for (const char* text : {"", "System", "compact ", "loose"})
        EXPECT_EQ(MenuBarSpacing::presetFromRawValue(text), std::nullopt) << text;
}

}  // namespace
}  // namespace velmo
