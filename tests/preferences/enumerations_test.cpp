#include "preferences/click_action.h"
#include "preferences/toggle_icon_style.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <unordered_set>
#include <vector>

namespace velmo {
namespace {

std::vector<std::string> namesOf(std::string_view (*name)(ToggleIconStyle)) {
    std::vector<std::string> names(allToggleIconStyles.size());
    std::transform(allToggleIconStyles.begin(), allToggleIconStyles.end(), names.begin(), name);
    return names;
}

TEST(ToggleIconStyle, ListsItsCasesInOrder) {
    EXPECT_EQ(namesOf(rawValue),
              (std::vector<std::string>{"chevron", "ellipsis", "dot", "lines", "eye", "fridge"}));
}

TEST(ToggleIconStyle, HasNamesForPeople) {
    EXPECT_EQ(namesOf(displayName),
              (std::vector<std::string>{"Chevron  \u2039 \u203a", "Ellipsis  \u2026", "Dot  \u25cf",
                                        "Lines  \u2261", "Eye", "Fridge (velmo)"}));
}

TEST(ToggleIconStyle, IsFoundByItsExactName) {
    for (const auto style : allToggleIconStyles)
        EXPECT_EQ(toggleIconStyleFromRawValue(rawValue(style)), style);
    for (const char* text : {"", "Eye", "eye ", "unknown", "EYE"})
        EXPECT_EQ(toggleIconStyleFromRawValue(text), ToggleIconStyle::chevron) << text;
}

TEST(ToggleIconStyle, IsHashedByItsName) {
    const std::unordered_set<ToggleIconStyle> styles(allToggleIconStyles.begin(), allToggleIconStyles.end());
    EXPECT_EQ(styles.size(), 6U);
    EXPECT_EQ(std::hash<ToggleIconStyle>()(ToggleIconStyle::dot), std::hash<std::string_view>()("dot"));
}

TEST(ClickAction, ListsItsCasesInOrder) {
    EXPECT_EQ(allClickActions.size(), 2U);
    EXPECT_EQ(rawValue(allClickActions[0]), "revealInMenuBar");
    EXPECT_EQ(rawValue(allClickActions[1]), "showPanel");
    EXPECT_EQ(displayName(ClickAction::revealInMenuBar), "Reveal items in the menu bar");
    EXPECT_EQ(displayName(ClickAction::showPanel), "Open the hidden items panel");
}

TEST(ClickAction, IsFoundByItsExactName) {
    EXPECT_EQ(clickActionFromRawValue("showPanel"), ClickAction::showPanel);
    EXPECT_EQ(clickActionFromRawValue("revealInMenuBar"), ClickAction::revealInMenuBar);
    for (const char* text : {"", "ShowPanel", "showpanel", "showPanel ", "unknown"})
        EXPECT_EQ(clickActionFromRawValue(text), ClickAction::revealInMenuBar) << text;
}

TEST(ClickAction, IsHashedByItsName) {
    EXPECT_EQ(std::hash<ClickAction>()(ClickAction::showPanel), std::hash<std::string_view>()("showPanel"));
}

}  // namespace
}  // namespace velmo
