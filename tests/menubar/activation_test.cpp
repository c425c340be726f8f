#include "menubar/panel_test.h"

namespace velmo {
namespace {

class Activation : public PanelTest {
protected:
    Activation() { start(); }

    /// Presses the entry in the panel and begins its task.
    void activate(const std::string& name) {
        press(panelContent(), name);
        desktop_.runLoop().runPosted();
    }
    const std::vector<SimulatedEventPoster::Posted>& posted() { return desktop_.eventPoster().posted(); }
    /// Where the middle of an item is for the window list.
    Point middleOf(const char* name) {
        const Rect frame = frameOf(name);
        return {frame.midX(), 900 - frame.midY()};
    }
    void enableRehide() {
        preferences_->autoRehide.set(true);
        preferences_->rehideDelay.set(3);
        desktop_.runLoop().runPosted();
    }
};

TEST_F(Activation, ClosesThePanelInALaterTurn) {
    openPanel();
    press(panelContent(), "h1");
    EXPECT_TRUE(isPanelVisible());
    desktop_.runLoop().runPosted();
    EXPECT_FALSE(isPanelVisible());
    EXPECT_TRUE(desktop_.events().locallyMonitoredMasks().empty());
}

TEST_F(Activation, RevealsTheHiddenSectionForAHiddenItem) {
    openPanel();
    activate("h1");
    EXPECT_EQ(level(), RevealLevel::hidden);
}

TEST_F(Activation, RevealsEverythingForAnAlwaysHiddenItem) {
    openPanel();
    activate("a2");
    EXPECT_EQ(level(), RevealLevel::all);
}

TEST_F(Activation, RaisesTheLevelForAnAlwaysHiddenItem) {
    openPanel();
    clickToggle();
    ASSERT_EQ(level(), RevealLevel::hidden);
    activate("a2");
    EXPECT_EQ(level(), RevealLevel::all);
}

TEST_F(Activation, NeverLowersTheLevel) {
    openPanel();
    manager_->toggleAlwaysHidden();
    activate("h1");
    EXPECT_EQ(level(), RevealLevel::all);
}

TEST_F(Activation, ClicksAQuarterOfASecondLater) {
    openPanel();
    activate("h1");
    desktop_.advance(0.249);
    EXPECT_TRUE(posted().empty());
    const Point middle = middleOf("h1");
    const Date moment = desktop_.runLoop().now();
    desktop_.advance(0.001 + 0.08);
    ASSERT_EQ(posted().size(), 3U);
    const std::array types{EventType::mouseMoved, EventType::leftMouseDown, EventType::leftMouseUp};
    for (std::size_t i = 0; i < types.size(); ++i) {
        EXPECT_EQ(posted()[i].type, types[i]);
        EXPECT_EQ(posted()[i].location, middle);
        EXPECT_NEAR(posted()[i].time - moment, 0.001 + 0.04 * static_cast<double>(i), 1e-6);
    }
    desktop_.advance(5);
    EXPECT_EQ(posted().size(), 3U) << "The pointer is left over the icon.";
}

TEST_F(Activation, ClicksAnItemWhereItIsByNow) {
    openPanel();
    const Rect before = manager_->snapshot().hidden.front().bounds;
    activate("h1");
    desktop_.statusBar().setOtherWidth("h2", 60);
    desktop_.advance(0.25);
    ASSERT_EQ(posted().size(), 1U);
    EXPECT_EQ(posted().front().location, middleOf("h1"));
    EXPECT_NE(posted().front().location.x, before.midX());
}

TEST_F(Activation, ClicksNothingWhereTheItemIsGone) {
    enableRehide();
    openPanel();
    activate("h1");
    desktop_.statusBar().removeOther("h1");
    desktop_.advance(0.25 + 2.999);
    EXPECT_TRUE(posted().empty());
    EXPECT_EQ(level(), RevealLevel::hidden);
    desktop_.advance(0.001);
    EXPECT_EQ(level(), RevealLevel::none);
}

TEST_F(Activation, ClicksNothingWithoutAScreen) {
    openPanel();
    activate("h1");
    desktop_.screens().set({});
    desktop_.advance(1);
    EXPECT_TRUE(posted().empty());
}

TEST_F(Activation, ClicksNothingWhereTheItemWasHiddenAgain) {
    openPanel();
    activate("h1");
    desktop_.advance(0.1);
    clickToggle();
    ASSERT_EQ(level(), RevealLevel::none);
    desktop_.advance(1);
    EXPECT_TRUE(posted().empty());
}

TEST_F(Activation, StopsTheRehideTimerUntilTheClickIsDone) {
    enableRehide();
    openPanel();
    clickToggle();
    activate("h1");
    EXPECT_EQ(desktop_.runLoop().timerCount(), 2U) << "The wait, and the pictures after a reveal.";
    desktop_.advance(0.33 + 2.999);
    EXPECT_EQ(posted().size(), 3U);
    EXPECT_EQ(level(), RevealLevel::hidden);
    desktop_.advance(0.001);
    EXPECT_EQ(level(), RevealLevel::none);
}

TEST_F(Activation, KeepsTheItemsRevealedWithoutAutomaticHiding) {
    openPanel();
    activate("h1");
    desktop_.advance(3600);
    EXPECT_EQ(level(), RevealLevel::hidden);
}

TEST_F(Activation, AsksForConsentEachTimeAndClicksNothing) {
    enableRehide();
    desktop_.accessibility().setTrusted(false);
    openPanel();
    activate("h1");
    desktop_.advance(0.249);
    EXPECT_EQ(desktop_.accessibility().promptCount(), 0);
    desktop_.advance(0.001);
    EXPECT_EQ(desktop_.accessibility().promptCount(), 1);
    EXPECT_EQ(settings_, std::vector<std::optional<SettingsTab>>{SettingsTab::panel});
    EXPECT_EQ(level(), RevealLevel::hidden);
    activate("h2");
    desktop_.advance(0.25);
    EXPECT_EQ(desktop_.accessibility().promptCount(), 2);
    EXPECT_EQ(settings_.size(), 2U);
    EXPECT_TRUE(posted().empty());
    desktop_.advance(2.999);
    EXPECT_EQ(level(), RevealLevel::hidden);
    desktop_.advance(0.001);
    EXPECT_EQ(level(), RevealLevel::none);
}

TEST_F(Activation, AsksForConsentAndThenOpensTheSettings) {
    desktop_.accessibility().setTrusted(false);
    openPanel();
    int promptsBefore = 0;
    manager_->onOpenSettings = [&](std::optional<SettingsTab>) {
        promptsBefore = desktop_.accessibility().promptCount();
    };
    activate("h1");
    desktop_.advance(0.25);
    EXPECT_EQ(promptsBefore, 1);
}

TEST_F(Activation, AsksForNothingWhereTheItemIsGone) {
    desktop_.accessibility().setTrusted(false);
    openPanel();
    activate("h1");
    desktop_.statusBar().removeOther("h1");
    desktop_.advance(1);
    EXPECT_EQ(desktop_.accessibility().promptCount(), 0);
    EXPECT_TRUE(settings_.empty());
}

TEST_F(Activation, RunsSideBySideWithAnother) {
    openPanel();
    activate("h1");
    desktop_.advance(0.02);
    activate("a1");
    EXPECT_EQ(level(), RevealLevel::all);
    desktop_.advance(1);
    ASSERT_EQ(posted().size(), 6U);
    EXPECT_EQ(posted()[0].location, middleOf("h1"));
    EXPECT_EQ(posted()[1].location, middleOf("a1"));
    EXPECT_EQ(posted()[1].type, EventType::mouseMoved);
}

TEST_F(Activation, ToleratesThatTheSettingsEndTheManager) {
    desktop_.accessibility().setTrusted(false);
    openPanel();
    manager_->onOpenSettings = [this](std::optional<SettingsTab>) { manager_.reset(); };
    activate("h1");
    desktop_.advance(1);
    EXPECT_EQ(manager_, nullptr);
    EXPECT_EQ(desktop_.runLoop().timerCount(), 0U);
}

TEST_F(Activation, IsNotCancelledByWhatTheUserDoesMeanwhile) {
    openPanel();
    activate("h1");
    desktop_.advance(0.249);
    // Takes the place of the pictures that were to follow, and of no click.
    optionClickToggle();
    ASSERT_EQ(level(), RevealLevel::all);
    desktop_.advance(0.001 + 0.08);
    EXPECT_EQ(posted().size(), 3U);
}

}  // namespace
}  // namespace velmo
