#include "settings/settings_tab.h"

#include <gtest/gtest.h>

namespace velmo {
namespace {

TEST(SettingsTab, HasItsNamesAndSymbols) {
    struct Row {
        SettingsTab tab;
        const char* rawValue;
        const char* displayName;
        const char* symbolName;
    };
    const std::array<Row, 5> rows{{
        {SettingsTab::general, "general", "General", "gearshape"},
        {SettingsTab::hiding, "hiding", "Hiding", "eye.slash"},
        {SettingsTab::clock, "clock", "Clock", "clock"},
        {SettingsTab::panel, "panel", "Panel", "rectangle.topthird.inset.filled"},
        {SettingsTab::spacing, "spacing", "Spacing", "arrow.left.and.right"},
    }};
    for (std::size_t i = 0; i < rows.size(); ++i) {
        EXPECT_EQ(allSettingsTabs.at(i), rows[i].tab);
        EXPECT_EQ(rawValue(rows[i].tab), rows[i].rawValue);
        EXPECT_EQ(settingsTabFromRawValue(rows[i].rawValue), rows[i].tab);
        EXPECT_EQ(displayName(rows[i].tab), rows[i].displayName);
        EXPECT_EQ(symbolName(rows[i].tab), rows[i].symbolName);
    }
}

TEST(SettingsTab, IsAbsentForOtherTexts) {
    for (const char* text : {"", "General", "about"})
        EXPECT_EQ(settingsTabFromRawValue(text), std::nullopt) << text;
}

}  // namespace
}  // namespace velmo
