#include "hidden_items/menu_bar_items.h"

#include "platform/simulated/simulated_desktop.h"

#include <gtest/gtest.h>

#include <limits>

namespace velmo {
namespace {

class MenuBarItems : public testing::Test {
protected:
    static WindowListEntry window(const Rect& bounds) {
        WindowListEntry entry;
        entry.number = 55;
        entry.layer = 25;
        entry.ownerPID = 7;
        entry.ownerName = "Mail";
        entry.name = "Inbox";
        entry.bounds = bounds;
        entry.isOnScreen = true;
        return entry;
    }

    std::vector<MenuBarItemInfo> items(const std::vector<ClosedInterval>& excluded = {}) {
        return currentMenuBarItems(*desktop_.screens().main(), excluded, desktop_.platform());
    }

    bool isListed(const WindowListEntry& entry, const std::vector<ClosedInterval>& excluded = {}) {
        desktop_.windowServer().removeAllWindows();
        desktop_.windowServer().addWindow(entry);
        return !items(excluded).empty();
    }

    bool isListed(const Rect& bounds) { return isListed(window(bounds)); }

    SimulatedDesktop desktop_;
};

TEST_F(MenuBarItems, AreReadFromTheWindowList) {
    desktop_.windowServer().addWindow(window({100, 0, 24, 26}));
    EXPECT_EQ(items(), (std::vector{MenuBarItemInfo{55, 7, "Mail", "Inbox", {100, 0, 24, 26}, true}}));
}

TEST_F(MenuBarItems, HaveFixedValuesForWhatIsMissing) {
    WindowListEntry entry;
    entry.layer = 25;
    entry.bounds = {100, 0, 24, 26};
    desktop_.windowServer().addWindow(entry);
    EXPECT_EQ(items(), (std::vector{MenuBarItemInfo{0, 0, "Unknown", std::nullopt, {100, 0, 24, 26}, true}}));
}

TEST_F(MenuBarItems, HaveTheirPlaceInTheStatusLayer) {
    auto entry = window({100, 0, 24, 26});
    EXPECT_TRUE(isListed(entry));
    for (const auto layer : {std::optional<std::int64_t>(24), {26}, {0}, {101}, {-25}, {}}) {
        entry.layer = layer;
        EXPECT_FALSE(isListed(entry));
    }
}

TEST_F(MenuBarItems, MustHaveBounds) {
    auto entry = window({});
    entry.bounds.reset();
    EXPECT_FALSE(isListed(entry));
}

TEST_F(MenuBarItems, AreAsLargeAsAnIcon) {
    EXPECT_FALSE(isListed({100, 0, 3.9, 26}));
    EXPECT_TRUE(isListed({100, 0, 4, 26}));
    EXPECT_TRUE(isListed({100, 0, 499.9, 26}));
    EXPECT_FALSE(isListed({100, 0, 500, 26}));
    EXPECT_FALSE(isListed({100, 0, 24, 11.9}));
    EXPECT_TRUE(isListed({100, 0, 24, 12}));
    EXPECT_TRUE(isListed({100, 0, 24, 48}));
    EXPECT_FALSE(isListed({100, 0, 24, 48.1}));
    constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();
    EXPECT_FALSE(isListed({100, 0, notANumber, 26}));
    EXPECT_FALSE(isListed({100, 0, 24, notANumber}));
}

TEST_F(MenuBarItems, AreMeasuredWhicheverWayTheirBoundsAreGiven) {
    EXPECT_TRUE(isListed({124, 26, -24, -26}));
    EXPECT_FALSE(isListed({124, 26, -3.9, -26}));
}

TEST_F(MenuBarItems, MustMeetTheMenuBar) {
    EXPECT_TRUE(isListed({100, 25.9, 24, 26}));
    EXPECT_FALSE(isListed({100, 26, 24, 26}));
    EXPECT_FALSE(isListed({100, -26, 24, 26}));
    EXPECT_TRUE(isListed({-23.9, 0, 24, 26}));
    EXPECT_FALSE(isListed({-24, 0, 24, 26}));
    EXPECT_TRUE(isListed({1439.9, 0, 24, 26}));
    EXPECT_FALSE(isListed({1440, 0, 24, 26}));
}

TEST_F(MenuBarItems, BelongToTheirScreen) {
    const Screen second = SimulatedScreens::withMenuBar({1440, 100, 1000, 600});
    desktop_.screens().set({SimulatedScreens::withMenuBar({0, 0, 1440, 900}), second});
    desktop_.windowServer().addWindow(window({100, 0, 24, 26}));
    auto other = window({1500, 200, 24, 26});
    other.number = 56;
    desktop_.windowServer().addWindow(other);
    EXPECT_EQ(items().at(0).windowID, 55U);
    EXPECT_EQ(items().size(), 1U);
    const auto onSecond = currentMenuBarItems(second, {}, desktop_.platform());
    ASSERT_EQ(onSecond.size(), 1U);
    EXPECT_EQ(onSecond[0].windowID, 56U);
}

TEST_F(MenuBarItems, LieOutsideTheExcludedRanges) {
    const auto entry = window({100, 0, 24, 26});
    EXPECT_FALSE(isListed(entry, {{112, 200}}));
    EXPECT_FALSE(isListed(entry, {{0, 112}}));
    EXPECT_FALSE(isListed(entry, {{112, 112}}));
    EXPECT_FALSE(isListed(entry, {{0, 1}, {100, 124}}));
    EXPECT_TRUE(isListed(entry, {{112.1, 200}}));
    EXPECT_TRUE(isListed(entry, {{0, 111.9}, {113, 120}}));
}

TEST_F(MenuBarItems, OfTheProgramItselfAreLeftOutByRangesAlone) {
    const auto own = desktop_.statusBar().makeStatusItem(24);
    EXPECT_EQ(items().size(), 1U);
    EXPECT_EQ(items({{1415, 1441}}).size(), 0U);
}

TEST_F(MenuBarItems, LieFromLeftToRight) {
    for (const double x : {300.0, 100.0, 200.0}) {
        auto entry = window({x, 0, 24, 26});
        entry.number = static_cast<std::int64_t>(x);
        desktop_.windowServer().addWindow(entry);
    }
    const auto sorted = items();
    ASSERT_EQ(sorted.size(), 3U);
    EXPECT_EQ(sorted[0].windowID, 100U);
    EXPECT_EQ(sorted[1].windowID, 200U);
    EXPECT_EQ(sorted[2].windowID, 300U);
}

TEST_F(MenuBarItems, KeepTheOrderOfTheListWhereTheyBeginTogether) {
    for (std::int64_t number = 0; number < 40; ++number) {
        auto entry = window({number % 2 == 0 ? 100.0 : 50.0, 0, 24, 26});
        entry.number = number;
        desktop_.windowServer().addWindow(entry);
    }
    const auto sorted = items();
    ASSERT_EQ(sorted.size(), 40U);
    // The newest window is the front one.
    for (std::size_t i = 0; i < 20; ++i) {
        EXPECT_EQ(sorted[i].windowID, 39 - 2 * i);
        EXPECT_EQ(sorted[20 + i].windowID, 38 - 2 * i);
    }
}

TEST_F(MenuBarItems, AreNoneWhereTheWindowServerDoesNotAnswer) {
    desktop_.windowServer().addWindow(window({100, 0, 24, 26}));
    desktop_.windowServer().setAvailable(false);
    EXPECT_TRUE(items().empty());
}

TEST_F(MenuBarItems, AreListedWithTheHiddenMenuBar) {
    desktop_.screens().setMenuBarHidden(true);
    desktop_.statusBar().setThickness(20);
    EXPECT_TRUE(isListed({100, 23.9, 24, 26}));
    EXPECT_FALSE(isListed({100, 24, 24, 26}));
}

TEST_F(MenuBarItems, TakeEveryWindowNumberThatFits) {
    auto entry = window({100, 0, 24, 26});
    entry.number = 4294967295;
    desktop_.windowServer().addWindow(entry);
    EXPECT_EQ(items().at(0).windowID, 4294967295U);
}

TEST_F(MenuBarItems, EndTheProgramAtANumberThatDoesNotFit) {
    GTEST_FLAG_SET(death_test_style, "fast");
    for (const std::int64_t number : {std::int64_t{-1}, std::int64_t{4294967296}}) {
        auto entry = window({100, 0, 24, 26});
        entry.number = number;
        EXPECT_DEATH(isListed(entry), "");
        // One that is dropped before its number is read does no harm.
        entry.layer = 0;
        EXPECT_FALSE(isListed(entry));
    }
}

TEST(ClosedInterval, HoldsBothItsEnds) {
    const ClosedInterval interval(1, 2);
    EXPECT_TRUE(interval.contains(1));
    EXPECT_TRUE(interval.contains(2));
    EXPECT_FALSE(interval.contains(0.999));
    EXPECT_FALSE(interval.contains(2.001));
}

TEST(ClosedInterval, EndsTheProgramWhereItIsInverted) {
    GTEST_FLAG_SET(death_test_style, "fast");
    EXPECT_DEATH(ClosedInterval(2, 1), "");
    EXPECT_DEATH(ClosedInterval(std::numeric_limits<double>::quiet_NaN(), 1), "");
    EXPECT_EQ(ClosedInterval(2, 2).lower(), 2);
}

}  // namespace
}  // namespace velmo
