#include "linux/bar/item_placement.h"

#include <gtest/gtest.h>

namespace velmo::item_placement {

namespace {

constexpr int rightEdge = 1000;
constexpr int longItem = 500;

/// Right to left from the right edge: toggle, two programs, divider, one program.
std::vector<PlacedItem> collapsedBar() {
    return {{"Velmo.Toggle", 970, 30},
            {"mail", 940, 30},
            {"sound", 910, 30},
            {"Velmo.Divider", 898, 12},
            {"chat", 868, 30}};
}

std::vector<PlacedItem> expandedBar() {
    return {
        {"Velmo.Toggle", 970, 30}, {"mail", 940, 30}, {"Velmo.Divider", -9060, 10000}, {"chat", -9090, 30}};
}

std::size_t indexAt(const std::vector<PlacedItem>& others, const std::string& dragged, int x,
                    int width = 30) {
    return dropIndex(others, {dragged, x, width}, rightEdge, longItem);
}

TEST(DropIndex, IsThatOfTheNearestSlot) {
    const auto others = collapsedBar();
    EXPECT_EQ(indexAt(others, "new", 970), 0U);
    EXPECT_EQ(indexAt(others, "new", 956), 0U);
    EXPECT_EQ(indexAt(others, "new", 954), 1U);
    EXPECT_EQ(indexAt(others, "new", 940), 1U);
    EXPECT_EQ(indexAt(others, "new", 911), 2U);
    EXPECT_EQ(indexAt(others, "new", 880), 3U);
    EXPECT_EQ(indexAt(others, "new", 868), 4U);
    EXPECT_EQ(indexAt(others, "new", 838), 5U);
    EXPECT_EQ(indexAt(others, "new", 0), 5U);
}

TEST(DropIndex, BeyondTheRightEndIsTheRightmostSlot) {
    EXPECT_EQ(indexAt(collapsedBar(), "new", 2000), 0U);
}

TEST(DropIndex, InTheEmptyBarIsDirectlyLeftOfAnExpandedDivider) {
    const auto others = expandedBar();
    EXPECT_EQ(indexAt(others, "new", 910), 2U) << "right of the divider: stays visible";
    EXPECT_EQ(indexAt(others, "new", 880), 3U);
    EXPECT_EQ(indexAt(others, "new", 100), 3U);
    EXPECT_EQ(indexAt(others, "new", -5000), 3U) << "not among the items that cannot be seen";
}

TEST(DropIndex, ToggleStaysRightOfTheDivider) {
    auto others = collapsedBar();
    others.erase(others.begin());
    EXPECT_EQ(indexAt(others, "Velmo.Toggle", 0), 2U);
    EXPECT_EQ(indexAt(others, "Velmo.Toggle", 970), 0U);
}

TEST(DropIndex, DividerStaysLeftOfTheToggle) {
    auto others = collapsedBar();
    others.erase(others.begin() + 3);
    EXPECT_EQ(indexAt(others, "Velmo.Divider", 990, 12), 1U);
    EXPECT_EQ(indexAt(others, "Velmo.Divider", 0, 12), 4U);
}

TEST(DropIndex, DividersKeepTheirOrder) {
    auto others = collapsedBar();
    others.push_back({"Velmo.AlwaysHiddenDivider", 856, 12});
    auto withoutOuter = others;
    withoutOuter.pop_back();
    EXPECT_EQ(indexAt(withoutOuter, "Velmo.AlwaysHiddenDivider", 990, 12), 4U);
    auto withoutInner = others;
    withoutInner.erase(withoutInner.begin() + 3);
    EXPECT_EQ(indexAt(withoutInner, "Velmo.Divider", 0, 12), 4U);
}

TEST(DropIndex, OfTheOnlyItemIsTheFirst) {
    EXPECT_EQ(indexAt({}, "new", 300), 0U);
}

TEST(Drop, GivesTheItemItsPlaceInTheOrder) {
    StatusItemOrder order({"Velmo.Toggle", "mail", "away", "sound", "Velmo.Divider", "chat"});
    auto others = collapsedBar();
    drop(order, others, "new", 0);
    EXPECT_FALSE(order.contains("new")) << "unknown items have no place to leave";

    std::erase_if(others, [](const auto& item) { return item.identity == "sound"; });
    drop(order, others, "sound", 0);
    EXPECT_EQ(order.rightToLeft(),
              (std::vector<std::string>{"sound", "Velmo.Toggle", "mail", "away", "Velmo.Divider", "chat"}));
    drop(order, others, "sound", 4);
    EXPECT_EQ(order.rightToLeft(),
              (std::vector<std::string>{"Velmo.Toggle", "mail", "away", "Velmo.Divider", "chat", "sound"}));
}

TEST(Drop, BeyondTheEndIsTheFarLeft) {
    StatusItemOrder order({"new", "Velmo.Toggle", "mail"});
    drop(order, {{"Velmo.Toggle", 970, 30}, {"mail", 940, 30}}, "new", 7);
    EXPECT_EQ(order.rightToLeft(), (std::vector<std::string>{"Velmo.Toggle", "mail", "new"}));
}

/// So that the user finds the section as it was where the other divider has only been there and back.
TEST(Drop, DividerThatIsAwayStaysAndGoesToItsSideOnceItComesBack) {
    const std::string outer = "Velmo.AlwaysHiddenDivider";
    const std::vector<std::string> before = {"Velmo.Toggle", "Velmo.Divider", "mail", outer, "chat"};
    StatusItemOrder order(before);
    const std::vector<PlacedItem> others = {{"Velmo.Toggle", 970, 30}, {"mail", 940, 30}, {"chat", 910, 30}};
    drop(order, others, "Velmo.Divider", 3);
    EXPECT_EQ(order.rightToLeft(),
              (std::vector<std::string>{"Velmo.Toggle", "mail", outer, "chat", "Velmo.Divider"}));
    auto back = order;
    drop(back, others, "Velmo.Divider", 1);
    EXPECT_EQ(back.rightToLeft(), before);
    placeOwnItem(order, "Velmo.Divider");
    EXPECT_EQ(order.rightToLeft().back(), "Velmo.Divider") << "the other is still away";
    placeOwnItem(order, outer);
    EXPECT_EQ(order.rightToLeft(),
              (std::vector<std::string>{"Velmo.Toggle", "mail", "chat", "Velmo.Divider", outer}));
}

TEST(Placement, ForgetsAbsentOnesWhereNewOnesComeFirst) {
    StatusItemOrder order({"a", "Velmo.Toggle", "b", "c", "d", "Velmo.Divider", "e", "f"});
    forgetAbsent(order, {"c"}, {5, 5});
    EXPECT_EQ(order.rightToLeft().size(), 8U) << "whoever is present does not count, nor do ours";
    forgetAbsent(order, {"c"}, {3, 5});
    EXPECT_EQ(order.rightToLeft(),
              (std::vector<std::string>{"a", "Velmo.Toggle", "c", "Velmo.Divider", "e", "f"}));
    forgetAbsent(order, {"c"}, {1, 5});
    EXPECT_EQ(order.rightToLeft(), (std::vector<std::string>{"Velmo.Toggle", "c", "Velmo.Divider", "e"}))
        << "those that the user has hidden come last";
    forgetAbsent(order, {"c"}, {0, 5});
    EXPECT_EQ(order.rightToLeft(), (std::vector<std::string>{"Velmo.Toggle", "c", "Velmo.Divider"}));
}

TEST(Placement, OneProgramDoesNotPushOutTheOthers) {
    StatusItemOrder order(
        {"wild.1", "wild.2", "Velmo.Toggle", "mail.a", "Velmo.Divider", "chat.b", "wild.3"});
    forgetAbsent(order, {}, {4, 2});
    EXPECT_EQ(order.rightToLeft(), (std::vector<std::string>{"wild.1", "Velmo.Toggle", "mail.a",
                                                             "Velmo.Divider", "chat.b", "wild.3"}))
        << "it gives way first";
}

TEST(Placement, ForgetsWhereNothingIsKnownOrNothingIsRightOfTheDivider) {
    StatusItemOrder none(std::vector<std::string>{});
    forgetAbsent(none, {"a"}, {0, 5});
    EXPECT_TRUE(none.rightToLeft().empty());
    StatusItemOrder dividerFirst({"Velmo.Divider", "a", "b"});
    forgetAbsent(dividerFirst, {"a"}, {0, 5});
    EXPECT_EQ(dividerFirst.rightToLeft(), (std::vector<std::string>{"Velmo.Divider", "a"}));
    StatusItemOrder noDivider({"a", "b"});
    forgetAbsent(noDivider, {"a"}, {0, 5});
    EXPECT_EQ(noDivider.rightToLeft(), std::vector<std::string>{"a"});
}

TEST(Placement, WhoeverHasOneNameAfterTheOtherDoesNotPushOutTheOthers) {
    const std::vector<std::string> known = {"Velmo.Toggle", "mail.a", "net.c", "Velmo.Divider", "chat.b"};
    StatusItemOrder order(known);
    std::vector<std::string> wild;
    for (int count = 0; count < 100; ++count) {
        wild.push_back("wild" + std::to_string(count) + ".icon");
        placeApplication(order, wild.back());
        forgetAbsent(order, wild, {10, 5});
    }
    EXPECT_EQ(order.rightToLeft().size(), known.size() + 100) << "all of them are there";
    forgetAbsent(order, {}, {10, 5});
    EXPECT_EQ(order.rightToLeft().size(), 2U + 10U);
    for (const auto& identity : known)
        EXPECT_TRUE(order.contains(identity)) << identity;
}

TEST(Placement, NewApplicationStandsDirectlyRightOfTheHiddenDivider) {
    StatusItemOrder order({"Velmo.Toggle", "mail", "Velmo.Divider", "chat"});
    placeApplication(order, "new");
    EXPECT_EQ(order.rightToLeft(),
              (std::vector<std::string>{"Velmo.Toggle", "mail", "new", "Velmo.Divider", "chat"}));
}

TEST(Placement, KnownApplicationKeepsItsPlace) {
    StatusItemOrder order({"Velmo.Toggle", "mail", "Velmo.Divider", "chat"});
    placeApplication(order, "chat");
    EXPECT_EQ(order.rank("chat"), 3U);
}

TEST(Placement, OurNewItemStandsAtTheFarLeft) {
    StatusItemOrder order({"Velmo.Toggle", "Velmo.Divider", "chat"});
    placeOwnItem(order, "Velmo.AlwaysHiddenDivider");
    EXPECT_EQ(order.rightToLeft().back(), "Velmo.AlwaysHiddenDivider");
}

TEST(Placement, StoredOrderThatKeepsTheToggleOutOfReachIsPutRight) {
    const std::string outer = "Velmo.AlwaysHiddenDivider";
    StatusItemOrder order({outer, "mail", "Velmo.Divider", "chat"});
    for (const auto& name : {std::string("Velmo.Toggle"), std::string("Velmo.Divider"), outer})
        placeOwnItem(order, name);
    EXPECT_EQ(order.rightToLeft(),
              (std::vector<std::string>{"Velmo.Toggle", "mail", "Velmo.Divider", outer, "chat"}))
        << "who was hidden still is";
    StatusItemOrder another({outer, "mail", "Velmo.Toggle", "chat"});
    placeOwnItem(another, "Velmo.Divider");
    EXPECT_EQ(another.rightToLeft(),
              (std::vector<std::string>{outer, "mail", "Velmo.Toggle", "Velmo.Divider", "chat"}));
}

}  // namespace

}  // namespace velmo::item_placement
