#include "menubar/panel_test.h"

namespace velmo {
namespace {

class OpenPanel : public PanelTest {
protected:
    OpenPanel() { start(); }

    Names entries() {
        Names names;
        for (const View* button : findAll<Button>(panelContent()))
            names.push_back(toolTipOf(*button));
        return names;
    }
    const Names all_{"h1", "h2", "a1", "a2", "a3", "Velmo Settings"};
};

/// The system gives the items no buttons, and so no place that is known.
class OpenPanelWithoutButtons : public PanelTest {
protected:
    OpenPanelWithoutButtons() {
        desktop_.statusBar().setRefusesButtons(true);
        start();
    }
};

TEST_F(OpenPanel, RevealsPicturesAndHidesWhereNothingIsKnown) {
    manager_->togglePanel();
    EXPECT_EQ(level(), RevealLevel::none) << "It begins in a later turn.";
    desktop_.runLoop().runPosted();
    EXPECT_EQ(level(), RevealLevel::all);
    desktop_.advance(0.349);
    EXPECT_EQ(pictureCount(), 0U);
    EXPECT_EQ(level(), RevealLevel::all);
    EXPECT_FALSE(isPanelVisible());
    desktop_.advance(0.001);
    EXPECT_EQ(level(), RevealLevel::none);
    EXPECT_EQ(pictureCount(), 5U);
    ASSERT_TRUE(isPanelVisible());
    EXPECT_EQ(entries(), all_);
    EXPECT_EQ(findAll<ImageView>(panelContent()).size(), 6U);
    EXPECT_FALSE(shows(panelContent(), "app.dashed"));
    desktop_.advance(2);
    EXPECT_EQ(pictureCount(), 5U) << "The refresh that follows a reveal finds everything hidden.";
    EXPECT_TRUE(isPanelVisible());
}

TEST_F(OpenPanel, IsPreparedWhileTheIconsAreRevealed) {
    manager_->togglePanel();
    EXPECT_EQ(desktop_.windows().preparations(), 0);
    desktop_.runLoop().runPosted();
    EXPECT_EQ(desktop_.windows().preparations(), 1);
    EXPECT_EQ(level(), RevealLevel::all);
    EXPECT_TRUE(desktop_.windows().panels().empty());
}

TEST_F(OpenPanel, AlwaysRevealsWhereNothingIsKnown) {
    preferences_->refreshPanelOnOpen.set(false);
    manager_->togglePanel();
    desktop_.runLoop().runPosted();
    EXPECT_EQ(level(), RevealLevel::all);
    desktop_.advance(0.349);
    EXPECT_EQ(level(), RevealLevel::all);
    EXPECT_EQ(pictureCount(), 0U);
    EXPECT_FALSE(isPanelVisible());
    desktop_.advance(0.001);
    EXPECT_EQ(level(), RevealLevel::none);
    EXPECT_EQ(pictureCount(), 5U);
    EXPECT_TRUE(isPanelVisible());
    EXPECT_EQ(entries(), all_);
}

TEST_F(OpenPanel, RevealsOnlyTheHiddenSectionWhereThereIsNoOther) {
    preferences_->alwaysHiddenEnabled.set(false);
    desktop_.runLoop().runPosted();
    manager_->togglePanel();
    desktop_.runLoop().runPosted();
    EXPECT_EQ(level(), RevealLevel::hidden);
    desktop_.advance(0.35);
    EXPECT_EQ(level(), RevealLevel::none);
    EXPECT_EQ(entries(), (Names{"a1", "a2", "a3", "h1", "h2", "Velmo Settings"}));
}

TEST_F(OpenPanel, StaysRevealedUntilThePicturesAreThere) {
    desktop_.screenCapture().setQueryDuration(0.02);
    desktop_.screenCapture().setDuration(windowOf("h2"), 0.01);
    manager_->togglePanel();
    desktop_.advance(0.379);
    EXPECT_EQ(level(), RevealLevel::all);
    EXPECT_FALSE(isPanelVisible());
    desktop_.advance(0.001);
    EXPECT_EQ(level(), RevealLevel::none);
    EXPECT_TRUE(isPanelVisible());
}

TEST_F(OpenPanel, ReusesWhatIsTwoSecondsOld) {
    takeSnapshot();
    desktop_.advance(2.0);
    manager_->togglePanel();
    desktop_.runLoop().runPosted();
    EXPECT_EQ(level(), RevealLevel::none);
    ASSERT_TRUE(isPanelVisible());
    EXPECT_EQ(entries(), all_);
    EXPECT_EQ(pictureCount(), 5U);
}

TEST_F(OpenPanel, RefreshesWhatIsOlder) {
    takeSnapshot();
    desktop_.advance(2.1);
    manager_->togglePanel();
    desktop_.runLoop().runPosted();
    EXPECT_EQ(level(), RevealLevel::all);
    EXPECT_FALSE(isPanelVisible());
    desktop_.advance(0.35);
    EXPECT_TRUE(isPanelVisible());
    EXPECT_EQ(pictureCount(), 10U);
}

TEST_F(OpenPanel, ReusesWhatIsMuchOlderWhereTheUserDoesNotWantItRefreshed) {
    preferences_->refreshPanelOnOpen.set(false);
    takeSnapshot();
    desktop_.advance(86400);
    manager_->togglePanel();
    desktop_.runLoop().runPosted();
    EXPECT_EQ(level(), RevealLevel::none);
    EXPECT_TRUE(isPanelVisible());
}

TEST_F(OpenPanel, ReusesASnapshotWithAnAlwaysHiddenSectionAlone) {
    for (const char* name : {"h1", "h2"})
        desktop_.statusBar().removeOther(name);
    preferences_->refreshPanelOnOpen.set(false);
    optionClickToggle();
    desktop_.advance(0.4);
    optionClickToggle();
    manager_->togglePanel();
    desktop_.runLoop().runPosted();
    EXPECT_EQ(level(), RevealLevel::none);
    EXPECT_TRUE(isPanelVisible());
}

TEST_F(OpenPanel, PicturesAtOnceAndHidesNothingWhileTheItemsAreRevealed) {
    clickToggle();
    manager_->togglePanel();
    desktop_.runLoop().runPosted();
    EXPECT_EQ(desktop_.screenCapture().queries().size(), 1U);
    desktop_.advance(0);
    EXPECT_TRUE(isPanelVisible());
    EXPECT_EQ(level(), RevealLevel::hidden);
    EXPECT_EQ(entries(), (Names{"h1", "h2", "Velmo Settings"}));
    desktop_.advance(5);
    EXPECT_EQ(level(), RevealLevel::hidden);
    EXPECT_TRUE(isPanelVisible());
}

TEST_F(OpenPanel, IsPlacedUnderTheToggle) {
    openPanel();
    const Rect anchor = *button(toggle).frameOnScreen();
    const Rect frame = desktop_.windows().panels().front()->frame();
    EXPECT_EQ(frame.maxY(), anchor.minY() - 6);
    EXPECT_EQ(frame.midX(), anchor.midX());
}

TEST_F(OpenPanel, TellsWhereNothingIsHidden) {
    for (const char* name : {"h1", "h2", "a1", "a2", "a3"})
        desktop_.statusBar().removeOther(name);
    manager_->togglePanel();
    desktop_.advance(0.35);
    ASSERT_TRUE(isPanelVisible());
    EXPECT_EQ(textsOf(panelContent()).size(), 1U);
    EXPECT_TRUE(entries().empty());
}

TEST_F(OpenPanel, ShowsADashedSymbolForWhatCouldNotBePictured) {
    desktop_.screenCapture().setFails(windowOf("h2"));
    openPanel();
    EXPECT_TRUE(shows(*find<Button>(panelContent(), "h2"), "app.dashed"));
    EXPECT_FALSE(shows(*find<Button>(panelContent(), "h1"), "app.dashed"));
}

TEST_F(OpenPanel, IsClosedBySecondCommand) {
    openPanel();
    manager_->togglePanel();
    EXPECT_FALSE(isPanelVisible());
    EXPECT_TRUE(desktop_.events().locallyMonitoredMasks().empty());
}

TEST_F(OpenPanel, IsClosedEvenWithoutAccess) {
    openPanel();
    desktop_.screenCapture().setGranted(false);
    manager_->togglePanel();
    EXPECT_FALSE(isPanelVisible());
    EXPECT_EQ(desktop_.screenCapture().requestCount(), 0U);
    EXPECT_TRUE(settings_.empty());
}

TEST_F(OpenPanel, IsClosedByAClickOnTheToggleAndOpenedByTheNext) {
    preferences_->clickAction.set(ClickAction::showPanel);
    openPanel();
    clickToggle();
    desktop_.advance(1);
    EXPECT_FALSE(isPanelVisible());
    clickToggle();
    desktop_.advance(1);
    EXPECT_TRUE(isPanelVisible());
    EXPECT_EQ(level(), RevealLevel::none);
}

TEST_F(OpenPanel, IsOpenedByAClickAfterAPressThatClosedItWasReleasedElsewhere) {
    preferences_->clickAction.set(ClickAction::showPanel);
    openPanel();
    desktop_.press(toggle);
    EXPECT_FALSE(isPanelVisible());
    desktop_.movePointer({300, 300});
    desktop_.releaseAtPointer();
    clickToggle();
    desktop_.advance(1);
    EXPECT_TRUE(isPanelVisible());
}

TEST_F(OpenPanel, IsOpenedByAClickOnTheToggle) {
    preferences_->clickAction.set(ClickAction::showPanel);
    takeSnapshot();
    clickToggle();
    desktop_.runLoop().runPosted();
    EXPECT_TRUE(isPanelVisible());
}

TEST_F(OpenPanel, OpensTheSettings) {
    openPanel();
    press(panelContent(), "Velmo Settings");
    EXPECT_EQ(settings_, std::vector<std::optional<SettingsTab>>{std::nullopt});
}

TEST_F(OpenPanel, DoesNothingWithoutAScreen) {
    desktop_.screens().set({});
    manager_->togglePanel();
    desktop_.advance(1);
    EXPECT_TRUE(desktop_.windows().panels().empty());
    EXPECT_EQ(level(), RevealLevel::none);
}

TEST_F(OpenPanel, ShowsTheOldPicturesWhereTheUserHidesMeanwhile) {
    takeSnapshot();
    desktop_.advance(3);
    manager_->togglePanel();
    desktop_.advance(0.2);
    optionClickToggle();
    EXPECT_EQ(level(), RevealLevel::none);
    desktop_.advance(0.15);
    EXPECT_EQ(pictureCount(), 5U);
    EXPECT_TRUE(isPanelVisible());
}

TEST_F(OpenPanel, ShowsASecondRequestWhatIsRevealedForTheFirst) {
    manager_->togglePanel();
    desktop_.advance(0.2);
    manager_->togglePanel();
    desktop_.advance(0);
    EXPECT_TRUE(isPanelVisible());
    EXPECT_EQ(level(), RevealLevel::all);
    desktop_.advance(0.15);
    EXPECT_TRUE(isPanelVisible());
    EXPECT_EQ(level(), RevealLevel::none);
}

TEST_F(OpenPanel, KeepsThePicturesThatWereUnderWayWhereTheUserHides) {
    desktop_.screenCapture().setDuration(windowOf("h1"), 0.1);
    manager_->togglePanel();
    desktop_.advance(0.36);
    ASSERT_EQ(pictureCount(), 5U);
    optionClickToggle();
    ASSERT_EQ(level(), RevealLevel::none);
    desktop_.advance(0.089);
    EXPECT_TRUE(manager_->snapshot().images.empty());
    desktop_.advance(0.001);
    EXPECT_EQ(manager_->snapshot().images.size(), 5U);
    EXPECT_TRUE(isPanelVisible());
    EXPECT_EQ(level(), RevealLevel::none);
}

TEST_F(OpenPanel, IsNotCancelledByTheRevealsThatFollow) {
    manager_->togglePanel();
    desktop_.advance(0.349);
    optionClickToggle();
    optionClickToggle();
    ASSERT_EQ(level(), RevealLevel::all);
    EXPECT_TRUE(desktop_.screenCapture().queries().empty());
    desktop_.advance(0.001);
    EXPECT_EQ(pictureCount(), 5U);
    EXPECT_TRUE(isPanelVisible());
    EXPECT_EQ(level(), RevealLevel::none);
}

// What the panel has to do with the state of hiding.

TEST_F(OpenPanel, KeepsTheItemsRevealedAfterTheRehideTimer) {
    preferences_->autoRehide.set(true);
    preferences_->rehideDelay.set(2);
    desktop_.runLoop().runPosted();
    clickToggle();
    manager_->togglePanel();
    desktop_.advance(4.9);
    EXPECT_EQ(level(), RevealLevel::hidden);
    manager_->togglePanel();
    desktop_.advance(0.099);
    EXPECT_EQ(level(), RevealLevel::hidden);
    desktop_.advance(0.001);
    EXPECT_EQ(level(), RevealLevel::none);
}

TEST_F(OpenPanel, IsAllThatAClickElsewhereCloses) {
    clickToggle();
    manager_->togglePanel();
    desktop_.advance(0);
    ASSERT_TRUE(isPanelVisible());
    clickElsewhere();
    EXPECT_FALSE(isPanelVisible());
    desktop_.advance(0.25);
    EXPECT_EQ(level(), RevealLevel::hidden);
    clickElsewhere();
    desktop_.advance(0.25);
    EXPECT_EQ(level(), RevealLevel::none);
}

TEST_F(OpenPanel, IsOpenedByHoveringButNotClosed) {
    preferences_->showOnHover.set(true);
    preferences_->clickAction.set(ClickAction::showPanel);
    takeSnapshot();
    const Rect frame = *button(toggle).frameOnScreen();
    desktop_.movePointer({frame.midX(), frame.midY()});
    desktop_.advance(0.249);
    EXPECT_FALSE(isPanelVisible());
    desktop_.advance(0.001);
    EXPECT_TRUE(isPanelVisible());
    desktop_.movePointer(outside);
    desktop_.movePointer({frame.midX(), frame.midY()});
    desktop_.advance(1);
    EXPECT_TRUE(isPanelVisible());
}

TEST_F(OpenPanelWithoutButtons, StaysClosedAsThereIsNothingToHangFrom) {
    ASSERT_TRUE(desktop_.screens().main());
    manager_->togglePanel();
    desktop_.advance(3);
    EXPECT_FALSE(isPanelVisible());
    EXPECT_TRUE(desktop_.windows().panels().empty());
}

TEST_F(OpenPanel, OpensOnTheScreenOfTheToggleAndNotWhereTheUserWorks) {
    const Rect second{1440, 0, 1440, 900};
    desktop_.screens().set(
        {SimulatedScreens::withMenuBar({0, 0, 1440, 900}), SimulatedScreens::withMenuBar(second)});
    desktop_.screens().setMain(1);
    takeSnapshot();
    manager_->togglePanel();
    desktop_.advance(3);
    ASSERT_TRUE(isPanelVisible());
    EXPECT_LE(desktop_.windows().visiblePanel()->frame().maxX(), second.x);
}

TEST_F(OpenPanel, ClosesOnEscapeAndHidesNothing) {
    clickToggle();
    manager_->togglePanel();
    desktop_.advance(0);
    EXPECT_FALSE(desktop_.pressKey(53));
    EXPECT_FALSE(isPanelVisible());
    EXPECT_EQ(level(), RevealLevel::hidden);
}

}  // namespace
}  // namespace velmo
