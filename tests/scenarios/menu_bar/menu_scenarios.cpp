#include "scenarios/scenario_test.h"

namespace velmo {
namespace {

using MenuScenario = ScenarioTest;

TEST_F(MenuScenario, FollowsTheLevel) {
    run([&] {
        const Titles shown{"Hide Items", "Open Hidden Items Panel", "-", "Settings…", "-", "Quit Velmo"};
        EXPECT_EQ(titlesAt(toggle), (Titles{"Show Hidden Items", "Open Hidden Items Panel", "-", "Settings…",
                                            "-", "Quit Velmo"}));
        reveal(RevealLevel::hidden);
        EXPECT_EQ(titlesAt(toggle), shown);
        EXPECT_EQ(titlesAt(hiddenDivider), shown);
        reveal(RevealLevel::all);
        EXPECT_EQ(titlesAt(toggle), shown);
    });
}

TEST_F(MenuScenario, HasAnAlwaysHiddenEntryWhereThatSectionIsOn) {
    desktop_->store("alwaysHiddenEnabled", true);
    run([&] {
        for (const auto wanted : {RevealLevel::none, RevealLevel::hidden, RevealLevel::all}) {
            reveal(wanted);
            const auto titles = titlesAt(toggle);
            ASSERT_EQ(titles.size(), 7U);
            EXPECT_EQ(titles[0], wanted == RevealLevel::none ? "Show Hidden Items" : "Hide Items");
            EXPECT_EQ(titles[1],
                      wanted == RevealLevel::all ? "Hide Always-Hidden Items" : "Show Always-Hidden Items");
            EXPECT_EQ(titles[2], "Open Hidden Items Panel");
        }
    });
}

TEST_F(MenuScenario, ShowsAndHidesTheHiddenItems) {
    run([&] {
        choose(toggle, "Show Hidden Items");
        EXPECT_EQ(level(), RevealLevel::hidden);
        choose(toggle, "Hide Items");
        EXPECT_EQ(level(), RevealLevel::none);
        reveal(RevealLevel::all);
        choose(toggle, "Hide Items");
        EXPECT_EQ(level(), RevealLevel::none);
    });
}

TEST_F(MenuScenario, ShowsAndHidesTheAlwaysHiddenItems) {
    desktop_->store("alwaysHiddenEnabled", true);
    run([&] {
        choose(toggle, "Show Always-Hidden Items");
        EXPECT_EQ(level(), RevealLevel::all);
        choose(toggle, "Hide Always-Hidden Items");
        EXPECT_EQ(level(), RevealLevel::none);
        reveal(RevealLevel::hidden);
        choose(toggle, "Show Always-Hidden Items");
        EXPECT_EQ(level(), RevealLevel::all);
    });
}

TEST_F(MenuScenario, ChangesNothingWhereNothingIsChosen) {
    run([&] {
        for (const auto wanted : {RevealLevel::none, RevealLevel::hidden, RevealLevel::all}) {
            reveal(wanted);
            EXPECT_EQ(titlesAt(toggle).size(), 6U);
            EXPECT_EQ(level(), wanted);
        }
        EXPECT_EQ(desktop_->endings(), 0);
    });
}

TEST_F(MenuScenario, Quits) {
    run([&] {
        choose(toggle, "Quit Velmo");
        EXPECT_EQ(desktop_->endings(), 1);
    });
}

TEST_F(MenuScenario, LetsTheWholeDelayPassOnceItHasClosed) {
    desktop_->store("rehideDelay", 1.0);
    run([&] {
        desktop_->click(toggle);
        desktop_->openMenu(toggle, [&] {
            desktop_->wait(1.3);
            EXPECT_EQ(level(), RevealLevel::hidden);
        });
        EXPECT_TRUE(hidesAfter(1));
    });
}

TEST_F(MenuScenario, OfTheClockOffersTheSystemsOptionsAndHidesIt) {
    desktop_->store("clockEnabled", true);
    desktop_->store("autoRehide", false);
    run([&] {
        // The clock is new, so that it is at the far left.
        reveal(RevealLevel::all);
        desktop_->openMenu(clock, [&] {
            EXPECT_EQ(desktop_->menuTitles(),
                      (Titles{"Clock Settings…", "System Clock Options…", "-", "Hide velmo Clock"}));
            desktop_->choose("System Clock Options…");
        });
        EXPECT_EQ(desktop_->openedAddresses(),
                  Titles{"x-apple.systempreferences:com.apple.ControlCenter-Settings.extension"});
        EXPECT_TRUE(desktop_->storedFlag("clockEnabled"));
        choose(clock, "Hide velmo Clock");
        EXPECT_FALSE(desktop_->storedFlag("clockEnabled"));
        EXPECT_FALSE(desktop_->hasItem(clock));
    });
}

}  // namespace
}  // namespace velmo
