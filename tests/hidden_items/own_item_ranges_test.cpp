#include "hidden_items/menu_bar_items.h"
#include "menubar/manager_test.h"

namespace velmo {
namespace {

using OwnItemRanges = ManagerTest;
using Ranges = std::vector<ClosedInterval>;

TEST_F(OwnItemRanges, CoverTheVisibleItemsInTheirOrder) {
    desktop_.userDefaults().setBool(true, "alwaysHiddenEnabled");
    start();
    reveal(RevealLevel::all);
    // The toggle is 26 points wide here.
    EXPECT_EQ(manager_->ownItemRanges(), (Ranges{{1313, 1341}, {1301, 1315}, {1289, 1303}}));
    desktop_.statusBar().moveRightOf(toggle, alwaysHiddenDivider);
    EXPECT_EQ(manager_->ownItemRanges(), (Ranges{{1301, 1329}, {1289, 1303}, {1327, 1341}}));
}

TEST_F(OwnItemRanges, LeaveOutExpandedDividers) {
    desktop_.userDefaults().setBool(true, "alwaysHiddenEnabled");
    start();
    EXPECT_EQ(manager_->ownItemRanges(), (Ranges{{1313, 1341}}));
    reveal(RevealLevel::hidden);
    EXPECT_EQ(manager_->ownItemRanges(), (Ranges{{1313, 1341}, {1301, 1315}}));
}

TEST_F(OwnItemRanges, LeaveOutWhatIsFiveHundredPointsWide) {
    start();
    desktop_.statusBar().item(hiddenDivider)->setLength(499);
    EXPECT_EQ(manager_->ownItemRanges(), (Ranges{{1313, 1341}, {814, 1315}}));
    desktop_.statusBar().item(hiddenDivider)->setLength(500);
    EXPECT_EQ(manager_->ownItemRanges(), (Ranges{{1313, 1341}}));
}

TEST_F(OwnItemRanges, LeaveOutInvisibleItems) {
    start();
    reveal(RevealLevel::all);
    ASSERT_TRUE(button(alwaysHiddenDivider).frameOnScreen());
    EXPECT_EQ(manager_->ownItemRanges().size(), 2U);
}

TEST_F(OwnItemRanges, AreNoneWithoutAScreen) {
    start();
    desktop_.screens().set({});
    EXPECT_TRUE(manager_->ownItemRanges().empty());
}

TEST_F(OwnItemRanges, KeepTheOwnItemsOutOfTheMenuBarItems) {
    desktop_.statusBar().addOther({"mail", 7, "Mail", {}, 24});
    start();
    reveal(RevealLevel::hidden);
    const auto items =
        currentMenuBarItems(*desktop_.screens().main(), manager_->ownItemRanges(), desktop_.platform());
    ASSERT_EQ(items.size(), 2U);
    EXPECT_EQ(items[0].ownerName, "Mail");
    EXPECT_EQ(items[1].ownerName, "System");
}

TEST_F(OwnItemRanges, AreMadeOfTheFramesOnScreen) {
    const ControlItem item(ControlItem::Kind::divider, "Test.Item", desktop_.platform());
    EXPECT_EQ(MenuBarManager::frameOnScreen(item), (Rect{1328, 874, 12, 26}));
    desktop_.screens().set({});
    EXPECT_EQ(MenuBarManager::frameOnScreen(item), std::nullopt);
}

}  // namespace
}  // namespace velmo
