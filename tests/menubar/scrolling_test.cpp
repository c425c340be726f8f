#include "menubar/manager_test.h"

namespace velmo {
namespace {

class Scrolling : public ManagerTest {
protected:
    Scrolling() {
        desktop_.userDefaults().setBool(true, "showOnScroll");
        desktop_.userDefaults().setBool(false, "autoRehide");
        desktop_.movePointer(inMenuBar);
        start();
    }
};

TEST_F(Scrolling, DoesNothingWhereTheMenuBarIsAway) {
    desktop_.statusBar().setAwayFrom({desktop_.screens().main()->frame});
    scroll(0, 10);
    EXPECT_EQ(level(), RevealLevel::none);
    desktop_.statusBar().setAwayFrom({});
    scroll(0, 10);
    EXPECT_EQ(level(), RevealLevel::hidden);
}

TEST_F(Scrolling, AddsTheAxesUp) {
    scroll(3, 3);
    EXPECT_EQ(level(), RevealLevel::hidden);
    desktop_.advance(1);
    scroll(10, -10);
    EXPECT_EQ(level(), RevealLevel::hidden);
    scroll(-3, -1.5);
    EXPECT_EQ(level(), RevealLevel::none);
}

TEST_F(Scrolling, MustExceedFourPoints) {
    scroll(0, 4);
    scroll(4, 0);
    scroll(-2, -2);
    scroll(0, 0);
    EXPECT_EQ(level(), RevealLevel::none);
    scroll(0, 4.001);
    EXPECT_EQ(level(), RevealLevel::hidden);
    desktop_.advance(1);
    scroll(-4.001, 0);
    EXPECT_EQ(level(), RevealLevel::none);
}

TEST_F(Scrolling, CountsOnceInSixTenthsOfASecond) {
    scroll(0, 10);
    desktop_.advance(0.5);
    scroll(0, 10);
    EXPECT_EQ(level(), RevealLevel::hidden);
    desktop_.advance(0.1);
    scroll(0, 10);
    EXPECT_EQ(level(), RevealLevel::hidden);
    desktop_.advance(0.001);
    scroll(0, 10);
    EXPECT_EQ(level(), RevealLevel::none);
}

TEST_F(Scrolling, MeasuresFromTheLastScrollThatCounted) {
    scroll(0, 10);
    desktop_.advance(0.5);
    scroll(0, 10);
    desktop_.advance(0.2);
    scroll(0, 10);
    EXPECT_EQ(level(), RevealLevel::none);
}

TEST_F(Scrolling, IsNotHeldUpByScrollsThatAreTooSmall) {
    scroll(0, 1);
    scroll(0, 10);
    EXPECT_EQ(level(), RevealLevel::hidden);
}

TEST_F(Scrolling, DoesNothingWhereItIsSwitchedOff) {
    preferences_->showOnScroll.set(false);
    scroll(0, 10);
    EXPECT_EQ(level(), RevealLevel::none);
    preferences_->showOnScroll.set(true);
    scroll(0, 10);
    EXPECT_EQ(level(), RevealLevel::hidden);
}

TEST_F(Scrolling, LooksAfterTheEventIsOver) {
    desktop_.scrollAtPointer(0, 10);
    EXPECT_EQ(level(), RevealLevel::none);
    desktop_.movePointer(outside);
    desktop_.runLoop().runPosted();
    EXPECT_EQ(level(), RevealLevel::none);
}

TEST_F(Scrolling, DoesNothingWhereTheTimeOfDayWasSetBack) {
    desktop_.runLoop().setNow(1000);
    scroll(0, 10);
    desktop_.runLoop().setNow(500);
    desktop_.advance(10);
    scroll(0, 10);
    EXPECT_EQ(level(), RevealLevel::hidden);
}

TEST_F(Scrolling, NeverAsksForTheWindows) {
    for (int i = 0; i < 100; ++i) {
        scroll(0, 10);
        desktop_.advance(0.05);
    }
    EXPECT_EQ(desktop_.windowServer().listCount(), 0U);
}

}  // namespace
}  // namespace velmo
