#include "linux/x11/bar_strut.h"

#include <gtest/gtest.h>

namespace velmo::x11 {

namespace {

constexpr int rootWidth = 1920;
constexpr PixelRect above{0, 0, 1920, 400};
constexpr PixelRect left{0, 400, 640, 300};
constexpr PixelRect middle{640, 400, 640, 300};
constexpr PixelRect right{1280, 400, 640, 300};

constexpr PixelRect barOn(const PixelRect& monitor) {
    return {monitor.x, monitor.y, monitor.width, 26};
}

Strut strutUnder(const char* manager, const PixelRect& monitor, const std::vector<PixelRect>& monitors) {
    return StrutReader::named(manager).strutFor(barOn(monitor), monitors, rootWidth);
}

}  // namespace

TEST(BarStrut, ReachesFromTheEdgeOfTheRootWindowWhereNothingLiesAbove) {
    const Strut expected = {0, 0, 426, 0, 0, 0, 0, 0, 640, 1279, 0, 0};
    for (const char* manager : {"", "Openbox", "Metacity", "Xfwm4"})
        EXPECT_EQ(strutUnder(manager, middle, {middle, left, right}), expected) << manager;
}

TEST(BarStrut, IsAsDeepAsTheBarForThoseThatCountFromItsMonitor) {
    const Strut expected = {0, 0, 26, 0, 0, 0, 0, 0, 640, 1279, 0, 0};
    for (const char* manager : {"Fluxbox", "IceWM 3.3.1 (Linux)", "i3"}) {
        EXPECT_EQ(strutUnder(manager, middle, {middle, left, right}), expected) << manager;
        EXPECT_EQ(strutUnder(manager, middle, {middle, above}), expected) << manager;
    }
}

TEST(BarStrut, CoversAMonitorAboveOnlyWhereThatCostsItNothing) {
    EXPECT_EQ(strutUnder("Xfwm4", middle, {middle, above}),
              (Strut{0, 0, 426, 0, 0, 0, 0, 0, 640, 1279, 0, 0}));
    EXPECT_EQ(strutUnder("", middle, {middle, above}), Strut{});
    EXPECT_EQ(strutUnder("Openbox", middle, {middle, above}), Strut{});
}

TEST(BarStrut, HasTheColumnsThatNoMonitorSharesWhereOneIsEnough) {
    constexpr PixelRect wide{0, 400, 1920, 300};
    constexpr PixelRect leftAbove{0, 0, 640, 400};
    constexpr PixelRect middleAbove{640, 0, 640, 400};
    constexpr PixelRect rightAbove{1280, 0, 640, 400};
    constexpr PixelRect mostAbove{-100, 100, 2019, 300};
    const auto ofColumns = [](std::uint32_t begin, std::uint32_t end) {
        return Strut{0, 0, 426, 0, 0, 0, 0, 0, begin, end, 0, 0};
    };
    EXPECT_EQ(strutUnder("Openbox", wide, {wide, leftAbove}), ofColumns(640, 1919));
    EXPECT_EQ(strutUnder("Openbox", wide, {wide, rightAbove}), ofColumns(0, 1279));
    EXPECT_EQ(strutUnder("Openbox", wide, {wide, middleAbove}), ofColumns(0, 639));
    EXPECT_EQ(strutUnder("Openbox", wide, {wide, rightAbove, leftAbove}), ofColumns(640, 1279));
    EXPECT_EQ(strutUnder("Openbox", wide, {wide, mostAbove}), ofColumns(1919, 1919));
    EXPECT_EQ(strutUnder("Openbox", wide, {wide, leftAbove, mostAbove, rightAbove}), Strut{});
    EXPECT_EQ(strutUnder("", wide, {wide, leftAbove}), Strut{}) << "who knows how they are read";
}

TEST(BarStrut, ComesFromTheSideThatIsFreeWhereRowsCanBeReserved) {
    const Strut fromTheLeft = {1280, 0, 0, 0, 400, 425, 0, 0, 0, 0, 0, 0};
    const Strut fromTheRight = {0, 1280, 0, 0, 0, 0, 400, 425, 0, 0, 0, 0};
    EXPECT_EQ(strutUnder("Metacity", middle, {middle, above}), fromTheLeft);
    EXPECT_EQ(strutUnder("Metacity", middle, {middle, above, right}), fromTheLeft);
    EXPECT_EQ(strutUnder("Metacity", middle, {middle, above, left}), fromTheRight);
    EXPECT_EQ(strutUnder("Metacity", middle, {middle, above, left, right}), Strut{});
}

}  // namespace velmo::x11
