#include "scenarios/scenario_test.h"

#include <stdexcept>

namespace velmo {

ScenarioTest::ScenarioTest() {
    desktop_->store("hasCompletedFirstLaunch", true);
}

RevealLevel ScenarioTest::level() {
    const double hidden = desktop_->length(hiddenDivider);
    const double alwaysHidden = desktop_->length(alwaysHiddenDivider);
    if (hidden == revealing && alwaysHidden == revealing)
        return RevealLevel::all;
    EXPECT_EQ(alwaysHidden, hiding);
    if (hidden == revealing)
        return RevealLevel::hidden;
    EXPECT_EQ(hidden, hiding);
    return RevealLevel::none;
}

void ScenarioTest::reveal(RevealLevel wanted) {
    if (level() != RevealLevel::none)
        desktop_->click(toggle);
    if (wanted == RevealLevel::hidden)
        desktop_->click(toggle);
    if (wanted == RevealLevel::all)
        desktop_->click(toggle, modifier::option);
    ASSERT_EQ(level(), wanted);
}

ScenarioTest::Titles ScenarioTest::titlesAt(const char* item) {
    Titles titles;
    desktop_->openMenu(item, [&] { titles = desktop_->menuTitles(); });
    return titles;
}

void ScenarioTest::choose(const char* item, const std::string& title) {
    desktop_->openMenu(item, [&] { desktop_->choose(title); });
}

testing::AssertionResult ScenarioTest::reaches(RevealLevel wanted, Seconds seconds) {
    return desktop_->happensAfter(seconds, [this, wanted] { return level() == wanted; });
}

namespace {

TEST_F(ScenarioTest, NobodyCanClickWhatIsNotThere) {
    run([&] {
        EXPECT_THROW(desktop_->click(clock), std::logic_error);
        EXPECT_THROW(choose(clock, "Hide velmo Clock"), std::logic_error);
    });
}

}  // namespace

}  // namespace velmo
