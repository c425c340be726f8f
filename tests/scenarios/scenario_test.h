#pragma once

#include "menubar/reveal_level.h"
#include "scenarios/scenario_desktop.h"

namespace velmo {

/// A situation that is written once and played on each desktop. The program has run before, so that it does
/// not open its settings by itself.
class ScenarioTest : public testing::Test {
protected:
    using Place = ScenarioDesktop::Place;
    using Titles = std::vector<std::string>;

    static constexpr const char* toggle = "Velmo.Toggle";
    static constexpr const char* hiddenDivider = "Velmo.Divider";
    static constexpr const char* alwaysHiddenDivider = "Velmo.AlwaysHiddenDivider";
    static constexpr const char* clock = "Velmo.Clock";
    /// Lengths of dividers.
    static constexpr double hiding = 10000;
    static constexpr double revealing = 12;

    ScenarioTest();

    void run(const std::function<void()>& user) { desktop_->run(user); }
    RevealLevel level();
    /// Brings the level about by clicks on the toggle.
    void reveal(RevealLevel wanted);
    Titles titlesAt(const char* item);
    void choose(const char* item, const std::string& title);
    testing::AssertionResult hidesAfter(Seconds seconds) { return reaches(RevealLevel::none, seconds); }
    testing::AssertionResult reaches(RevealLevel wanted, Seconds seconds);

    std::unique_ptr<ScenarioDesktop> desktop_ = makeScenarioDesktop();
};

}  // namespace velmo
