#include "scenarios/scenario_test.h"

namespace velmo {
namespace {

/// A click on the toggle opens the panel.
class PanelScenario : public ScenarioTest {
protected:
    PanelScenario() {
        desktop_->store("clickAction", std::string("showPanel"));
        desktop_->setMayCapture(true);
    }

    void runWithPanel(const std::vector<std::string>& icons, const std::function<void()>& user) {
        run([&] {
            desktop_->setHiddenIcons(icons);
            desktop_->click(toggle);
            ASSERT_TRUE(opens());
            user();
        });
    }
    /// Meanwhile the icons are shown for their pictures.
    testing::AssertionResult opens() {
        return desktop_->happensAfter(0.35, [&] { return panel_.isShown(); });
    }

    ScenarioWindow& panel_ = desktop_->panel();
};

TEST_F(PanelScenario, ShowsTheHiddenIconsAndGoesWithTheNextClick) {
    runWithPanel({"Mail", "Notes"}, [&] {
        EXPECT_EQ(level(), RevealLevel::none);
        EXPECT_TRUE(panel_.hasButton("Mail"));
        EXPECT_TRUE(panel_.hasButton("Notes"));
        EXPECT_FALSE(panel_.hasButton("Chat"));
        desktop_->click(toggle);
        EXPECT_FALSE(panel_.isShown());
    });
}

TEST_F(PanelScenario, OpensFromTheMenu) {
    run([&] {
        desktop_->setHiddenIcons({"Mail"});
        choose(toggle, "Open Hidden Items Panel");
        ASSERT_TRUE(opens());
        EXPECT_TRUE(panel_.hasButton("Mail"));
    });
}

TEST_F(PanelScenario, OpensFromTheSettings) {
    run([&] {
        desktop_->setHiddenIcons({"Mail"});
        desktop_->startAgain();
        desktop_->settings().chooseTab("Panel");
        desktop_->settings().press("Open the panel now");
        ASSERT_TRUE(opens());
        EXPECT_TRUE(panel_.hasButton("Mail"));
    });
}

TEST_F(PanelScenario, ClosesOnEscape) {
    runWithPanel({"Mail"}, [&] {
        panel_.close();
        EXPECT_FALSE(panel_.isShown());
        EXPECT_EQ(desktop_->clickedIcon(), "");
    });
}

TEST_F(PanelScenario, TellsWhereNothingIsHidden) {
    runWithPanel({}, [&] {
        EXPECT_TRUE(
            panel_.shows("No hidden items yet.\n⌘-drag icons to the left of the divider to hide them."));
    });
}

TEST_F(PanelScenario, ClicksTheRealIcon) {
    desktop_->setTrusted(true);
    runWithPanel({"Mail", "Notes"}, [&] {
        panel_.press("Notes");
        EXPECT_FALSE(panel_.isShown());
        EXPECT_EQ(level(), RevealLevel::hidden);
        EXPECT_TRUE(desktop_->happensAfter(0.33, [&] { return desktop_->clickedIcon() == "Notes"; }));
        EXPECT_EQ(desktop_->trustQuestions(), 0);
    });
}

TEST_F(PanelScenario, ClicksNothingWithoutConsentWhichIsAskedFor) {
    runWithPanel({"Mail"}, [&] {
        panel_.press("Mail");
        EXPECT_TRUE(desktop_->happensWithin(0.4, [&] { return desktop_->settings().isShown(); }));
        EXPECT_EQ(desktop_->settings().chosenTab(), "Panel");
        EXPECT_EQ(desktop_->trustQuestions(), 1);
        EXPECT_EQ(desktop_->clickedIcon(), "");
    });
}

TEST_F(PanelScenario, NeedsConsentToItsPictures) {
    desktop_->setMayCapture(false);
    run([&] {
        desktop_->click(toggle);
        EXPECT_EQ(desktop_->captureQuestions(), 1);
        EXPECT_FALSE(panel_.isShown());
        ASSERT_TRUE(desktop_->settings().isShown());
        EXPECT_EQ(desktop_->settings().chosenTab(), "Panel");
    });
}

}  // namespace
}  // namespace velmo
