#include "linux/bar/item_spacing.h"

#include <gtest/gtest.h>

#include <map>

namespace velmo {

namespace {

class GivenPreferences : public GlobalPreferences {
public:
    explicit GivenPreferences(std::map<std::string, Value> values) : values_(std::move(values)) {}

    std::optional<Value> value(const std::string& key) const override {
        const auto found = values_.find(key);
        return found == values_.end() ? std::nullopt : std::optional(found->second);
    }
    void setValue(const std::string& /*key*/, std::optional<std::int64_t> /*value*/) override {}
    void synchronize() override {}

private:
    std::map<std::string, Value> values_;
};

ItemSpacing spaced(const GlobalPreferences::Value& spacing) {
    return ItemSpacing(
        GivenPreferences({{"NSStatusItemSpacing", spacing}, {"NSStatusItemSelectionPadding", spacing}}));
}

TEST(ItemSpacingTest, WithoutPreferencesIsTheBarsOwn) {
    for (const auto& spacing : {ItemSpacing(), ItemSpacing(GivenPreferences({})), spaced("6")}) {
        EXPECT_EQ(spacing.iconWidth(), 30);
        EXPECT_EQ(spacing.iconHighlightWidth(), 30);
        EXPECT_EQ(spacing.itemWidth(15), 31);
        EXPECT_EQ(spacing.highlightWidth(15), 31);
    }
}

TEST(ItemSpacingTest, CompactFitsAboutAThirdMoreIcons) {
    const auto compact = spaced(10.0);
    EXPECT_NEAR(ItemSpacing().iconWidth() / compact.iconWidth(), 1 + 1.0 / 3, 0.04);
    EXPECT_EQ(compact.itemWidth(15), 23);
    EXPECT_EQ(compact.highlightWidth(15), 23);
}

TEST(ItemSpacingTest, TightLeavesNothingBetweenIcons) {
    const auto tight = spaced(6.0);
    EXPECT_EQ(tight.iconWidth(), bar_metrics::trayIconSide);
    EXPECT_EQ(tight.itemWidth(15), 19);
    EXPECT_EQ(spaced(0.0).iconWidth(), bar_metrics::trayIconSide) << "and cannot be outdone";
    EXPECT_EQ(spaced(-1e300).itemWidth(15), 19);
}

TEST(ItemSpacingTest, ValuesInBetweenAreInBetween) {
    EXPECT_EQ(spaced(8.0).iconWidth(), 20);
    EXPECT_EQ(spaced(9.0).iconWidth(), 21);
    EXPECT_EQ(spaced(12.5).iconWidth(), 24.5);
    EXPECT_EQ(spaced(18.0).iconWidth(), 30);
    EXPECT_EQ(spaced(24.0).iconWidth(), 36);
    EXPECT_EQ(spaced(1e300).iconWidth(), 212) << "a bound for all";
    EXPECT_EQ(spaced(24.0).itemWidth(15), 37);
}

TEST(ItemSpacingTest, HighlightStaysInsideItsItem) {
    const ItemSpacing narrow(GivenPreferences({{"NSStatusItemSelectionPadding", 6.0}}));
    EXPECT_EQ(narrow.itemWidth(15), 31);
    EXPECT_EQ(narrow.highlightWidth(15), 19);
    EXPECT_EQ(narrow.iconWidth(), 30);
    EXPECT_EQ(narrow.iconHighlightWidth(), 20);
    const ItemSpacing wide(
        GivenPreferences({{"NSStatusItemSpacing", 6.0}, {"NSStatusItemSelectionPadding", 30.0}}));
    EXPECT_EQ(wide.itemWidth(15), 19);
    EXPECT_EQ(wide.highlightWidth(15), 19);
    EXPECT_EQ(wide.iconHighlightWidth(), 20);
}

}  // namespace

}  // namespace velmo
