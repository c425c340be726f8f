#include "hidden_items/menu_bar_rect.h"

#include "platform/simulated/simulated_desktop.h"

#include <gtest/gtest.h>

namespace velmo {
namespace {

class MenuBarRect : public testing::Test {
protected:
    Rect rectOf(const Screen& screen) { return menuBarRect(screen, desktop_.platform()); }

    SimulatedDesktop desktop_;
};

TEST_F(MenuBarRect, IsTheStripAboveTheVisibleFrame) {
    EXPECT_EQ(rectOf(*desktop_.screens().main()), (Rect{0, 0, 1440, 26}));
}

TEST_F(MenuBarRect, IsMeasuredFromTheTopOfThePrimaryScreen) {
    const Screen lower = SimulatedScreens::withMenuBar({1440, -100, 800, 600}, 30);
    const Screen higher = SimulatedScreens::withMenuBar({-800, 500, 800, 600}, 22);
    desktop_.screens().set({SimulatedScreens::withMenuBar({0, 0, 1440, 900}), lower, higher});
    EXPECT_EQ(rectOf(lower), (Rect{1440, 400, 800, 30}));
    EXPECT_EQ(rectOf(higher), (Rect{-800, -200, 800, 22}));
}

TEST_F(MenuBarRect, StandsForItselfWithoutAnyScreen) {
    desktop_.screens().set({});
    EXPECT_EQ(rectOf(SimulatedScreens::withMenuBar({100, 50, 800, 600}, 30)), (Rect{100, 0, 800, 30}));
}

TEST_F(MenuBarRect, IsAsHighAsTheStatusBarWhereTheMenuBarIsHidden) {
    desktop_.screens().setMenuBarHidden(true);
    for (const auto& [thickness, height] :
         {std::pair{26.0, 26.0}, {24.0, 24.0}, {23.9, 24.0}, {37.0, 37.0}}) {
        desktop_.statusBar().setThickness(thickness);
        EXPECT_EQ(rectOf(*desktop_.screens().main()), (Rect{0, 0, 1440, height}));
    }
}

TEST_F(MenuBarRect, TakesAnyStripThatIsThere) {
    EXPECT_EQ(rectOf(SimulatedScreens::withMenuBar({0, 0, 800, 600}, 0.5)).height, 0.5);
    EXPECT_EQ(rectOf(SimulatedScreens::withMenuBar({0, 0, 800, 600}, -5)).height, 26);
}

}  // namespace
}  // namespace velmo
