#include "menubar/panel_test.h"

namespace velmo {
namespace {

/// It goes an instant before a wait of one of its tasks is over, at each wait that there is.
class WhereTheManagerGoes : public PanelTest {
protected:
    WhereTheManagerGoes() { start(); }

    /// Presses the entry in the panel and begins its task.
    void activate(const std::string& name) {
        press(panelContent(), name);
        desktop_.runLoop().runPosted();
    }
    const std::vector<SimulatedEventPoster::Posted>& posted() { return desktop_.eventPoster().posted(); }
};

TEST_F(WhereTheManagerGoes, PicturesAfterARevealAreNotWaitedFor) {
    clickToggle();
    manager_.reset();
    desktop_.advance(1);
    EXPECT_EQ(desktop_.runLoop().timerCount(), 0U);
    EXPECT_TRUE(desktop_.screenCapture().queries().empty());
}

TEST_F(WhereTheManagerGoes, PicturesAfterARevealAreNotTaken) {
    clickToggle();
    desktop_.advance(0.399);
    manager_.reset();
    EXPECT_EQ(desktop_.runLoop().timerCount(), 0U);
    desktop_.advance(1);
    EXPECT_TRUE(desktop_.screenCapture().queries().empty());
}

TEST_F(WhereTheManagerGoes, TheirQueryIsFollowedByNoPictures) {
    desktop_.screenCapture().setQueryDuration(0.1);
    clickToggle();
    desktop_.advance(0.499);
    ASSERT_EQ(desktop_.screenCapture().queries().size(), 1U);
    manager_.reset();
    desktop_.advance(1);
    EXPECT_EQ(pictureCount(), 0U);
}

TEST_F(WhereTheManagerGoes, PicturesUnderWayPrepareNothing) {
    preferences_->panelHotkey.set(HotkeyBinding{35, modifier::command, "⌘P"});
    desktop_.screenCapture().setDuration(windowOf("h1"), 0.1);
    clickToggle();
    desktop_.advance(0.499);
    ASSERT_EQ(pictureCount(), 2U);
    manager_.reset();
    desktop_.advance(1);
    EXPECT_EQ(desktop_.windows().preparations(), 0);
}

TEST_F(WhereTheManagerGoes, APanelDoesNotBeginToOpen) {
    manager_->togglePanel();
    manager_.reset();
    desktop_.advance(1);
    EXPECT_EQ(desktop_.windows().preparations(), 0);
    EXPECT_TRUE(desktop_.screenCapture().queries().empty());
    EXPECT_TRUE(desktop_.windows().panels().empty());
}

TEST_F(WhereTheManagerGoes, WhatIsRevealedForAPanelIsNotPictured) {
    manager_->togglePanel();
    desktop_.advance(0.349);
    ASSERT_EQ(level(), RevealLevel::all);
    manager_.reset();
    EXPECT_EQ(desktop_.runLoop().timerCount(), 0U);
    desktop_.advance(1);
    EXPECT_TRUE(desktop_.screenCapture().queries().empty());
    EXPECT_TRUE(desktop_.windows().panels().empty());
}

TEST_F(WhereTheManagerGoes, TheQueryForAPanelIsFollowedByNoPictures) {
    desktop_.screenCapture().setQueryDuration(0.04);
    manager_->togglePanel();
    desktop_.advance(0.389);
    ASSERT_EQ(desktop_.screenCapture().queries().size(), 1U);
    manager_.reset();
    desktop_.advance(1);
    EXPECT_EQ(pictureCount(), 0U);
    EXPECT_TRUE(desktop_.windows().panels().empty());
}

TEST_F(WhereTheManagerGoes, PicturesForAPanelAreFollowedByNone) {
    desktop_.screenCapture().setDuration(windowOf("h1"), 0.02);
    desktop_.screenCapture().setDuration(windowOf("a2"), 0.04);
    manager_->togglePanel();
    // Four of the five have come.
    desktop_.advance(0.389);
    ASSERT_EQ(pictureCount(), 5U);
    ASSERT_EQ(level(), RevealLevel::all);
    manager_.reset();
    desktop_.advance(1);
    EXPECT_TRUE(desktop_.windows().panels().empty());
    EXPECT_EQ(desktop_.runLoop().timerCount(), 0U);
}

TEST_F(WhereTheManagerGoes, PicturesOfWhatTheUserHasRevealedAreFollowedByNoPanel) {
    desktop_.screenCapture().setDuration(windowOf("h1"), 0.1);
    clickToggle();
    manager_->togglePanel();
    desktop_.advance(0.099);
    ASSERT_EQ(pictureCount(), 2U);
    EXPECT_FALSE(isPanelVisible());
    manager_.reset();
    desktop_.advance(1);
    EXPECT_EQ(pictureCount(), 2U);
    EXPECT_TRUE(desktop_.windows().panels().empty());
}

TEST_F(WhereTheManagerGoes, AClickOnAPictureDoesNotBegin) {
    openPanel();
    press(panelContent(), "h1");
    manager_.reset();
    desktop_.advance(5);
    EXPECT_TRUE(posted().empty());
    EXPECT_EQ(desktop_.runLoop().timerCount(), 0U);
}

TEST_F(WhereTheManagerGoes, TheRealItemIsNotClicked) {
    openPanel();
    activate("h1");
    desktop_.advance(0.249);
    manager_.reset();
    EXPECT_EQ(desktop_.runLoop().timerCount(), 0U);
    desktop_.advance(5);
    EXPECT_TRUE(posted().empty());
}

TEST_F(WhereTheManagerGoes, NobodyIsAskedForConsent) {
    desktop_.accessibility().setTrusted(false);
    openPanel();
    activate("h1");
    desktop_.advance(0.249);
    manager_.reset();
    desktop_.advance(5);
    EXPECT_EQ(desktop_.accessibility().promptCount(), 0);
    EXPECT_TRUE(settings_.empty());
}

TEST_F(WhereTheManagerGoes, AMoveIsFollowedByNoPress) {
    openPanel();
    activate("h1");
    desktop_.advance(0.289);
    ASSERT_EQ(posted().size(), 1U);
    manager_.reset();
    EXPECT_EQ(desktop_.runLoop().timerCount(), 0U);
    desktop_.advance(5);
    EXPECT_EQ(posted().size(), 1U);
}

TEST_F(WhereTheManagerGoes, APressIsReleasedAtOnce) {
    openPanel();
    activate("h1");
    desktop_.advance(0.329);
    ASSERT_EQ(posted().back().type, EventType::leftMouseDown);
    manager_.reset();
    EXPECT_EQ(posted().back().type, EventType::leftMouseUp);
    EXPECT_EQ(desktop_.runLoop().timerCount(), 0U);
    desktop_.advance(5);
    EXPECT_EQ(posted().size(), 3U);
}

}  // namespace
}  // namespace velmo
