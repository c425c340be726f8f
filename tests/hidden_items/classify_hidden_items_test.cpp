#include "hidden_items/classify_hidden_items.h"

#include <gtest/gtest.h>

namespace velmo {
namespace {

MenuBarItemInfo itemAround(double middle) {
    return {static_cast<std::uint32_t>(middle), 0, "", {}, {middle - 10, 0, 20, 26}, true};
}

const Rect divider{500, 874, 12, 26};
const Rect alwaysHiddenDivider{300, 874, 12, 26};

TEST(ClassifyHiddenItems, SplitsByTheDividers) {
    const std::vector items{itemAround(100), itemAround(200), itemAround(400), itemAround(450),
                            itemAround(600)};
    const auto sections = classifyHiddenItems(items, divider, alwaysHiddenDivider);
    EXPECT_EQ(sections.alwaysHidden, (std::vector{items[0], items[1]}));
    EXPECT_EQ(sections.hidden, (std::vector{items[2], items[3]}));
}

TEST(ClassifyHiddenItems, TakesTheMiddleOfAnItem) {
    EXPECT_EQ(classifyHiddenItems({itemAround(499.9)}, divider, {}).hidden.size(), 1U);
    EXPECT_EQ(classifyHiddenItems({itemAround(500)}, divider, {}), HiddenItems{});
    EXPECT_EQ(classifyHiddenItems({itemAround(505)}, divider, {}), HiddenItems{});
}

TEST(ClassifyHiddenItems, CountsTheEdgeOfTheAlwaysHiddenDividerToTheHiddenSection) {
    const auto left = classifyHiddenItems({itemAround(299.9)}, divider, alwaysHiddenDivider);
    EXPECT_EQ(left.alwaysHidden.size(), 1U);
    const auto at = classifyHiddenItems({itemAround(300)}, divider, alwaysHiddenDivider);
    EXPECT_TRUE(at.alwaysHidden.empty());
    EXPECT_EQ(at.hidden.size(), 1U);
}

TEST(ClassifyHiddenItems, PutsAllIntoOneSectionWithoutTheAlwaysHiddenDivider) {
    const std::vector items{itemAround(100), itemAround(400)};
    const auto sections = classifyHiddenItems(items, divider, std::nullopt);
    EXPECT_EQ(sections.hidden, items);
    EXPECT_TRUE(sections.alwaysHidden.empty());
}

TEST(ClassifyHiddenItems, ListsNothingRightOfTheDividerWhereTheOtherIsFurtherRight) {
    const Rect misplaced{700, 874, 12, 26};
    const auto sections = classifyHiddenItems({itemAround(400), itemAround(600)}, divider, misplaced);
    EXPECT_EQ(sections.alwaysHidden, (std::vector{itemAround(400)}));
    EXPECT_TRUE(sections.hidden.empty());
}

TEST(ClassifyHiddenItems, KeepsTheOrderItIsGiven) {
    const std::vector items{itemAround(400), itemAround(350), itemAround(450)};
    EXPECT_EQ(classifyHiddenItems(items, divider, alwaysHiddenDivider).hidden, items);
}

}  // namespace
}  // namespace velmo
