#include "scenarios/scenario_test.h"

namespace velmo {
namespace {

class ClickElsewhereScenario : public ScenarioTest {
protected:
    ClickElsewhereScenario() { desktop_->store("autoRehide", false); }
};

class HoverScenario : public ScenarioTest {
protected:
    HoverScenario() { desktop_->store("showOnHover", true); }
};

class ScrollScenario : public ScenarioTest {
protected:
    ScrollScenario() {
        desktop_->store("showOnScroll", true);
        desktop_->store("autoRehide", false);
    }
};

TEST_F(ClickElsewhereScenario, HidesAQuarterOfASecondLater) {
    run([&] {
        desktop_->click(toggle);
        desktop_->clickWithPointer();
        EXPECT_TRUE(hidesAfter(0.25));
    });
}

TEST_F(ClickElsewhereScenario, HidesNothingWhileAMenuOfAnotherApplicationIsOpen) {
    run([&] {
        desktop_->click(toggle);
        desktop_->setOtherMenuOpen(true);
        desktop_->clickWithPointer();
        desktop_->wait(0.4);
        EXPECT_EQ(level(), RevealLevel::hidden);
        desktop_->setOtherMenuOpen(false);
        desktop_->clickWithPointer();
        EXPECT_TRUE(hidesAfter(0.25));
    });
}

TEST_F(ClickElsewhereScenario, HidesNothingInTheMenuBar) {
    run([&] {
        desktop_->click(toggle);
        desktop_->movePointer(Place::menuBar);
        desktop_->clickWithPointer();
        desktop_->wait(0.4);
        EXPECT_EQ(level(), RevealLevel::hidden);
    });
}

TEST_F(ClickElsewhereScenario, HidesNothingWhereThatIsSwitchedOff) {
    desktop_->store("hideOnClickOutside", false);
    run([&] {
        desktop_->click(toggle);
        desktop_->clickWithPointer();
        desktop_->wait(0.4);
        EXPECT_EQ(level(), RevealLevel::hidden);
    });
}

TEST_F(HoverScenario, RevealsAQuarterOfASecondLater) {
    run([&] {
        desktop_->movePointer(Place::toggle);
        EXPECT_TRUE(reaches(RevealLevel::hidden, 0.25));
    });
}

TEST_F(HoverScenario, RevealsNothingWhereThePointerLeavesBefore) {
    run([&] {
        desktop_->movePointer(Place::toggle);
        desktop_->movePointer(Place::elsewhere);
        desktop_->wait(0.4);
        EXPECT_EQ(level(), RevealLevel::none);
        desktop_->movePointer(Place::toggle);
        EXPECT_TRUE(reaches(RevealLevel::hidden, 0.25));
    });
}

TEST_F(HoverScenario, LowersAllToHidden) {
    run([&] {
        reveal(RevealLevel::all);
        desktop_->movePointer(Place::toggle);
        EXPECT_TRUE(reaches(RevealLevel::hidden, 0.25));
    });
}

TEST_F(ScenarioTest, HoveringRevealsNothingWhereItIsOff) {
    run([&] {
        desktop_->movePointer(Place::toggle);
        desktop_->wait(0.4);
        EXPECT_EQ(level(), RevealLevel::none);
    });
}

TEST_F(ScrollScenario, ShowsAndHidesWhereItExceedsFourPointsOfBothAxes) {
    run([&] {
        desktop_->movePointer(Place::menuBar);
        for (const auto& [deltaX, deltaY] :
             {std::pair{0.0, 4.0}, {4.0, 0.0}, {-2.0, -2.0}, {0.0, 0.0}, {10.0, -10.0}}) {
            desktop_->scroll(deltaX, deltaY);
            EXPECT_EQ(level(), RevealLevel::none) << deltaX << ' ' << deltaY;
        }
        desktop_->scroll(3, 1.001);
        EXPECT_EQ(level(), RevealLevel::hidden);
        desktop_->wait(0.65);
        desktop_->scroll(-4.001, 0);
        EXPECT_EQ(level(), RevealLevel::none);
    });
}

TEST_F(ScrollScenario, CountsOnceInSixTenthsOfASecond) {
    run([&] {
        desktop_->movePointer(Place::menuBar);
        desktop_->scroll(0, 10);
        desktop_->scroll(0, 10);
        EXPECT_EQ(level(), RevealLevel::hidden);
        desktop_->wait(0.65);
        desktop_->scroll(0, 10);
        EXPECT_EQ(level(), RevealLevel::none);
    });
}

TEST_F(ScrollScenario, HidesEverythingThatIsShown) {
    run([&] {
        reveal(RevealLevel::all);
        desktop_->movePointer(Place::menuBar);
        desktop_->scroll(0, -10);
        EXPECT_EQ(level(), RevealLevel::none);
    });
}

TEST_F(ScrollScenario, DoesNothingOutsideTheMenuBar) {
    run([&] {
        desktop_->scroll(0, 10);
        EXPECT_EQ(level(), RevealLevel::none);
    });
}

TEST_F(ScenarioTest, ScrollingDoesNothingWhereItIsOff) {
    run([&] {
        desktop_->movePointer(Place::menuBar);
        desktop_->scroll(0, 10);
        EXPECT_EQ(level(), RevealLevel::none);
    });
}

}  // namespace
}  // namespace velmo
