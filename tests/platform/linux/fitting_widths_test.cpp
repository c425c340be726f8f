#include "linux/bar/fitting_widths.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <numeric>

namespace velmo {

namespace {

using Widths = std::vector<int>;

constexpr ItemWidth firmItem = {26, 26};
constexpr ItemWidth narrowItem = {12, 12};
constexpr ItemWidth hidingItem = {500, 500};
constexpr ItemWidth iconItem = {30, 12};

Widths widthsIn(int width, const std::vector<ItemWidth>& items) {
    return fittingWidths(items, {width, 500, 2});
}

TEST(FittingWidths, AreThePreferredOnesWhereThereIsRoom) {
    EXPECT_EQ(widthsIn(86, {firmItem, iconItem, iconItem}), (Widths{26, 30, 30}));
    EXPECT_EQ(widthsIn(85, {firmItem, iconItem, iconItem}), (Widths{26, 28, 28}));
    EXPECT_EQ(widthsIn(0, {}), Widths{});
}

TEST(FittingWidths, AreSmallerByAsMuchForAll) {
    EXPECT_EQ(widthsIn(122, {firmItem, iconItem, iconItem, narrowItem, iconItem}),
              (Widths{26, 28, 28, 12, 28}));
    EXPECT_EQ(widthsIn(121, {firmItem, iconItem, iconItem, narrowItem, iconItem}),
              (Widths{26, 26, 26, 12, 26}));
    EXPECT_EQ(widthsIn(60, {{40, 12}, {22, 12}}), (Widths{38, 20}));
}

TEST(FittingWidths, AreThePreferredOnesUntilThoseThatYieldFirstCanDoNoMore) {
    constexpr ItemWidth yielding = {30, 12, true};
    const std::vector<ItemWidth> items = {firmItem, iconItem, yielding, yielding};
    EXPECT_EQ(widthsIn(116, items), (Widths{26, 30, 30, 30}));
    EXPECT_EQ(widthsIn(115, items), (Widths{26, 30, 28, 28}));
    EXPECT_EQ(widthsIn(80, items), (Widths{26, 30, 12, 12}));
    EXPECT_EQ(widthsIn(79, items), (Widths{26, 28, 12, 12}));
    EXPECT_EQ(widthsIn(10, items), (Widths{26, 12, 12, 12}));
    EXPECT_EQ(widthsIn(56, {firmItem, iconItem, hidingItem, yielding}), (Widths{26, 30, 500, 30}));
    EXPECT_EQ(widthsIn(55, {firmItem, iconItem, hidingItem, yielding}), (Widths{26, 28, 500, 30}))
        << "what is hidden has no room to give";
}

TEST(FittingWidths, AreNeverBelowTheLeastOnes) {
    EXPECT_EQ(widthsIn(50, {firmItem, iconItem, iconItem}), (Widths{26, 12, 12}));
    EXPECT_EQ(widthsIn(10, {firmItem, iconItem, iconItem}), (Widths{26, 12, 12}));
    EXPECT_EQ(widthsIn(10, {{40, 12}, {15, 14}}), (Widths{12, 14}));
    EXPECT_EQ(widthsIn(9, {{15, 12}, {15, 12}}), (Widths{12, 12})) << "no multiple of the step";
}

TEST(FittingWidths, NeedNoRoomForWhatIsHidden) {
    EXPECT_EQ(widthsIn(56, {firmItem, iconItem, hidingItem, iconItem, iconItem}),
              (Widths{26, 30, 500, 30, 30}));
    EXPECT_EQ(widthsIn(55, {firmItem, iconItem, hidingItem, iconItem, iconItem}),
              (Widths{26, 28, 500, 28, 28}));
    EXPECT_EQ(widthsIn(555, {iconItem, {499, 499}, iconItem}), (Widths{28, 499, 28}))
        << "not wide enough to hide";
}

TEST(FittingWidths, LeaveNobodyOutWhereThatIsPossible) {
    for (std::size_t count = 1; count < 120; ++count) {
        const auto widths = widthsIn(1240, std::vector<ItemWidth>(count, iconItem));
        const int total = std::accumulate(widths.begin(), widths.end(), 0);
        EXPECT_EQ(total <= 1240, count <= 103) << count;
        EXPECT_EQ(std::count(widths.begin(), widths.end(), widths.front()), std::ptrdiff_t(count));
        EXPECT_TRUE(widths.front() == 30 || total + int(count) * 2 > 1240) << "no narrower than need be";
    }
}

}  // namespace

}  // namespace velmo
