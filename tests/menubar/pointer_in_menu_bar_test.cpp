#include "menubar/manager_test.h"

namespace velmo {
namespace {

class PointerInMenuBar : public ManagerTest {
protected:
    PointerInMenuBar() { start(); }

    bool isIn(double x, double y) {
        desktop_.movePointer({x, y});
        return manager_->isPointerInMenuBar();
    }
};

TEST_F(PointerInMenuBar, IsSeenUpToTheEdges) {
    EXPECT_TRUE(isIn(0, 900));
    EXPECT_TRUE(isIn(1439.9, 874.1));
    EXPECT_FALSE(isIn(700, 874));
    EXPECT_FALSE(isIn(700, 900.1));
    EXPECT_FALSE(isIn(-0.1, 890));
    EXPECT_FALSE(isIn(1440, 890));
    EXPECT_FALSE(isIn(700, 10));
}

TEST_F(PointerInMenuBar, IsSeenOnTheTopAndTheLeftEdgeOnly) {
    constexpr Rect left{-1000, 200, 1000, 800};
    desktop_.screens().set(
        {SimulatedScreens::withMenuBar({0, 0, 1440, 900}), SimulatedScreens::withMenuBar(left, 30)});
    EXPECT_TRUE(isIn(700, 900));
    EXPECT_TRUE(isIn(0, 890));
    EXPECT_TRUE(isIn(0, 900));
    EXPECT_FALSE(isIn(1440, 890));
    EXPECT_FALSE(isIn(1440, 900));
    EXPECT_FALSE(isIn(700, 874));
    EXPECT_FALSE(isIn(0, 874));
    EXPECT_TRUE(isIn(left.minX(), 980));
    EXPECT_TRUE(isIn(left.minX(), left.maxY()));
    EXPECT_FALSE(isIn(left.maxX(), 980));
    EXPECT_FALSE(isIn(left.minX(), 970));
}

TEST_F(PointerInMenuBar, IsSeenOnEveryScreen) {
    desktop_.screens().set({SimulatedScreens::withMenuBar({0, 0, 1440, 900}),
                            SimulatedScreens::withMenuBar({-1000, 200, 1000, 800}, 30),
                            SimulatedScreens::withMenuBar({1440, -300, 1000, 600}, 40)});
    EXPECT_TRUE(isIn(700, 880));
    EXPECT_TRUE(isIn(-500, 1000));
    EXPECT_TRUE(isIn(-500, 970.1));
    EXPECT_FALSE(isIn(-500, 970));
    EXPECT_FALSE(isIn(-500, 880));
    EXPECT_TRUE(isIn(1500, 300));
    EXPECT_FALSE(isIn(1500, 260));
    EXPECT_FALSE(isIn(1500, 880));
}

TEST_F(PointerInMenuBar, IsSeenWhereTheMenuBarIsHidden) {
    desktop_.screens().setMenuBarHidden(true);
    EXPECT_TRUE(isIn(700, 874.1));
    EXPECT_FALSE(isIn(700, 874));
    desktop_.statusBar().setThickness(20);
    EXPECT_TRUE(isIn(700, 876.1));
    EXPECT_FALSE(isIn(700, 876));
}

TEST_F(PointerInMenuBar, IsNotSeenWhereTheBarIsAway) {
    constexpr Rect left{-1000, 200, 1000, 800};
    constexpr Rect primary{0, 0, 1440, 900};
    desktop_.screens().set({SimulatedScreens::withMenuBar(primary), SimulatedScreens::withMenuBar(left, 30)});
    desktop_.statusBar().setAwayFrom({left});
    EXPECT_TRUE(isIn(700, 890));
    EXPECT_FALSE(isIn(-500, 990));
    desktop_.statusBar().setAwayFrom({primary});
    EXPECT_FALSE(isIn(700, 890));
    EXPECT_TRUE(isIn(-500, 990));
    desktop_.statusBar().setAwayFrom({left, primary});
    EXPECT_FALSE(isIn(700, 890));
    EXPECT_FALSE(isIn(-500, 990));
}

TEST_F(PointerInMenuBar, IsNowhereWithoutAScreen) {
    desktop_.screens().set({});
    EXPECT_FALSE(isIn(700, 890));
}

}  // namespace
}  // namespace velmo
