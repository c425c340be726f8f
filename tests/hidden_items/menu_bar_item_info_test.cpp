#include "hidden_items/menu_bar_item_info.h"

#include <gtest/gtest.h>

namespace velmo {
namespace {

const MenuBarItemInfo sample{1, 2, "Mail", "Inbox", {10, 0, 24, 26}, true};

std::size_t hashOf(const MenuBarItemInfo& item) {
    return std::hash<MenuBarItemInfo>()(item);
}

/// The sample with each field changed in turn.
std::vector<MenuBarItemInfo> variations() {
    std::vector<MenuBarItemInfo> items(10, sample);
    items[0].windowID = 3;
    items[1].ownerPID = 3;
    items[2].ownerName = "Chat";
    items[3].title = "Outbox";
    items[4].title.reset();
    items[5].bounds.x = 11;
    items[6].bounds.y = 1;
    items[7].bounds.width = 25;
    items[8].bounds.height = 27;
    items[9].isOnScreen = false;
    return items;
}

TEST(MenuBarItemInfo, ComparesAllFields) {
    const MenuBarItemInfo same = sample;
    EXPECT_EQ(same, sample);
    for (const auto& other : variations())
        EXPECT_NE(other, sample);
}

TEST(MenuBarItemInfo, HashesAllFields) {
    const MenuBarItemInfo same = sample;
    EXPECT_EQ(hashOf(same), hashOf(sample));
    for (const auto& other : variations())
        EXPECT_NE(hashOf(other), hashOf(sample));
}

/// One after the other into the usual mixture: 2^64 divided by the golden ratio, shifts by 6 and 2.
template <typename... Fields>
std::size_t mixed(const Fields&... fields) {
    std::size_t seed = 0;
    ((seed ^= std::hash<Fields>()(fields) + 11400714819323198485U + seed * 64 + seed / 4), ...);
    return seed;
}

TEST(MenuBarItemInfo, HashesItsFieldsInTheirOrder) {
    const Rect& bounds = sample.bounds;
    EXPECT_EQ(hashOf(sample), mixed(sample.windowID, sample.ownerPID, sample.ownerName, sample.title,
                                    bounds.x, bounds.y, bounds.width, bounds.height, sample.isOnScreen));
}

TEST(MenuBarItemInfo, HashesTheAreaAndNotHowItIsGiven) {
    MenuBarItemInfo mirrored = sample;
    mirrored.bounds = {34, 26, -24, -26};
    EXPECT_EQ(hashOf(mirrored), hashOf(sample));
}

TEST(MenuBarItemInfo, IsCalledByItsTitle) {
    MenuBarItemInfo item = sample;
    EXPECT_EQ(item.displayName(), "Inbox");
    item.ownerName = "Control Center";
    EXPECT_EQ(item.displayName(), "Inbox");
}

TEST(MenuBarItemInfo, IsCalledByItsOwnerWhereThereIsNoTitle) {
    MenuBarItemInfo item = sample;
    item.title = "";
    EXPECT_EQ(item.displayName(), "Mail");
    item.title.reset();
    EXPECT_EQ(item.displayName(), "Mail");
    item.ownerName = "";
    EXPECT_EQ(item.displayName(), "");
    item.ownerName = "control center";
    EXPECT_EQ(item.displayName(), "control center");
}

TEST(MenuBarItemInfo, HasNoNameWhereTheOwnerTellsNothing) {
    MenuBarItemInfo item = sample;
    item.ownerName = "Control Center";
    item.title = "";
    EXPECT_EQ(item.displayName(), std::nullopt);
    item.title.reset();
    EXPECT_EQ(item.displayName(), std::nullopt);
}

}  // namespace
}  // namespace velmo
