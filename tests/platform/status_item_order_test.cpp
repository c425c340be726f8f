#include "platform/status_item_order.h"

#include <gtest/gtest.h>
#include <utility>

namespace velmo {
namespace {

using Names = std::vector<std::string>;

TEST(StatusItemOrder, DropsRepeatedAndEmptyIdentities) {
    const StatusItemOrder order({"a", "", "b", "a"});
    EXPECT_EQ(order.rightToLeft(), (Names{"a", "b"}));
}

TEST(StatusItemOrder, RanksFromTheRight) {
    const StatusItemOrder order({"a", "b"});
    EXPECT_EQ(order.rank("a"), 0U);
    EXPECT_EQ(order.rank("b"), 1U);
    EXPECT_EQ(order.rank("unknown"), 2U);
    EXPECT_TRUE(order.contains("b"));
    EXPECT_FALSE(order.contains("unknown"));
}

TEST(StatusItemOrder, RanksAnewAfterEachChange) {
    StatusItemOrder order({"a", "b", "c"});
    const auto expectRanks = [&](const Names& rightToLeft) {
        ASSERT_EQ(order.rightToLeft(), rightToLeft);
        for (std::size_t rank = 0; rank < rightToLeft.size(); ++rank)
            EXPECT_EQ(order.rank(rightToLeft[rank]), rank) << rightToLeft[rank];
    };
    expectRanks({"a", "b", "c"});
    order.addRightOf("b", "d");
    expectRanks({"a", "d", "b", "c"});
    order.addRightOf("b", "e");
    order.addAtFarLeft("f");
    expectRanks({"a", "d", "e", "b", "c", "f"});
    order.moveLeftOf("f", "a");
    expectRanks({"d", "e", "b", "c", "f", "a"});
    order.moveRightOf("d", "c");
    expectRanks({"c", "d", "e", "b", "f", "a"});
    order.remove("d");
    expectRanks({"c", "e", "b", "f", "a"});
    EXPECT_EQ(order.rank("d"), 5U);
    EXPECT_FALSE(order.contains("d"));
}

TEST(StatusItemOrder, LeavesKnownIdentitiesWhereTheyAre) {
    StatusItemOrder order({"a", "b", "c"});
    order.addAtFarLeft("a");
    order.addRightOf("a", "c");
    EXPECT_EQ(order.rightToLeft(), (Names{"a", "b", "c"}));
}

TEST(StatusItemOrder, AddsAtTheFarLeft) {
    StatusItemOrder order({"a"});
    order.addAtFarLeft("b");
    EXPECT_EQ(order.rightToLeft(), (Names{"a", "b"}));
}

TEST(StatusItemOrder, AddsRightOfANeighbourOrAtTheFarRight) {
    StatusItemOrder order({"a", "b"});
    order.addRightOf("b", "c");
    EXPECT_EQ(order.rightToLeft(), (Names{"a", "c", "b"}));
    order.addRightOf("unknown", "d");
    EXPECT_EQ(order.rightToLeft(), (Names{"d", "a", "c", "b"}));
}

TEST(StatusItemOrder, MovesBesideANeighbour) {
    StatusItemOrder order({"a", "b", "c"});
    order.moveLeftOf("c", "a");
    EXPECT_EQ(order.rightToLeft(), (Names{"b", "c", "a"}));
    order.moveRightOf("b", "a");
    EXPECT_EQ(order.rightToLeft(), (Names{"a", "b", "c"}));
    order.moveLeftOf("a", "c");
    EXPECT_EQ(order.rightToLeft(), (Names{"a", "c", "b"}));
}

TEST(StatusItemOrder, MovesNothingThatIsUnknownOrItsOwnNeighbour) {
    StatusItemOrder order({"a", "b"});
    order.moveLeftOf("unknown", "a");
    order.moveRightOf("a", "unknown");
    order.moveLeftOf("a", "a");
    order.moveRightOf("b", "b");
    EXPECT_EQ(order.rightToLeft(), (Names{"a", "b"}));
}

TEST(StatusItemOrder, ForgetsWhatIsRemoved) {
    StatusItemOrder order({"a", "b"});
    order.remove("a");
    order.remove("unknown");
    EXPECT_EQ(order.rightToLeft(), (Names{"b"}));
}

TEST(StatusItemOrder, HasAnotherRevisionAfterAChange) {
    StatusItemOrder order({"a", "b"});
    auto before = order.revision();
    const auto hasChanged = [&] {
        const auto former = std::exchange(before, order.revision());
        return former != before;
    };
    order.addAtFarLeft("a");
    order.addRightOf("a", "b");
    order.moveLeftOf("a", "a");
    order.remove("c");
    EXPECT_FALSE(hasChanged());
    order.addAtFarLeft("c");
    EXPECT_TRUE(hasChanged());
    order.addRightOf("b", "d");
    EXPECT_TRUE(hasChanged());
    order.moveLeftOf("c", "a");
    EXPECT_TRUE(hasChanged());
    order.moveRightOf("c", "a");
    EXPECT_TRUE(hasChanged());
    order.remove("a");
    EXPECT_TRUE(hasChanged());
}

TEST(StatusItemLayout, PutsItemsSideBySideFromTheRightEdge) {
    EXPECT_EQ(layOutStatusItems(100, {10, 10000, 5}), (std::vector<double>{90, -9910, -9915}));
    EXPECT_TRUE(layOutStatusItems(100, {}).empty());
}

}  // namespace
}  // namespace velmo
