#include "menubar/panel_test.h"

namespace velmo {
namespace {

class Snapshots : public PanelTest {
protected:
    Snapshots() { start(); }

    const Image* picture(const char* name) {
        const auto& images = manager_->snapshot().images;
        const auto found = images.find(windowOf(name));
        return found != images.end() ? &found->second : nullptr;
    }
};

/// The system gives the items no buttons, and so no place that is known.
class SnapshotsWithoutButtons : public PanelTest {
protected:
    SnapshotsWithoutButtons() {
        desktop_.statusBar().setRefusesButtons(true);
        start();
    }
};

TEST_F(Snapshots, BeginEmpty) {
    EXPECT_EQ(manager_->snapshot().date, distantPast);
    EXPECT_TRUE(hiddenNames().empty());
    EXPECT_TRUE(alwaysHiddenNames().empty());
    EXPECT_TRUE(manager_->snapshot().images.empty());
}

TEST_F(Snapshots, AreTakenFourTenthsOfASecondAfterAReveal) {
    clickToggle();
    desktop_.advance(0.399);
    EXPECT_TRUE(desktop_.screenCapture().queries().empty());
    desktop_.advance(0.001);
    EXPECT_EQ(hiddenNames(), (Names{"h1", "h2"}));
    EXPECT_EQ(manager_->snapshot().date, desktop_.runLoop().now());
    EXPECT_NE(picture("h1"), nullptr);
    EXPECT_EQ(std::get<Bitmap>(picture("h1")->content).size, (Size{24, 26}));
    EXPECT_EQ(pictureCount(), 2U);
}

TEST_F(Snapshots, PrepareThePanelWhereTheUserHasAWayToIt) {
    auto& windows = desktop_.windows();
    const auto reveal = [&] {
        optionClickToggle();
        desktop_.advance(1);
        optionClickToggle();
    };
    reveal();
    EXPECT_EQ(windows.preparations(), 0) << "Few open it from the menu.";
    preferences_->clickAction.set(ClickAction::showPanel);
    optionClickToggle();
    desktop_.advance(0.399);
    EXPECT_EQ(windows.preparations(), 0);
    desktop_.advance(0.001);
    EXPECT_EQ(windows.preparations(), 1);
    optionClickToggle();
    preferences_->clickAction.set(ClickAction::revealInMenuBar);
    reveal();
    EXPECT_EQ(windows.preparations(), 1);
    preferences_->panelHotkey.set(HotkeyBinding{35, modifier::command, "⌘P"});
    reveal();
    EXPECT_EQ(windows.preparations(), 2);
}

TEST_F(Snapshots, KnowBothSectionsWhereBothAreShown) {
    optionClickToggle();
    desktop_.advance(0.4);
    EXPECT_EQ(hiddenNames(), (Names{"h1", "h2"}));
    EXPECT_EQ(alwaysHiddenNames(), (Names{"a1", "a2", "a3"}));
    EXPECT_EQ(manager_->snapshot().images.size(), 5U);
}

TEST_F(Snapshots, CountEverythingAsHiddenWithoutAnAlwaysHiddenSection) {
    preferences_->alwaysHiddenEnabled.set(false);
    desktop_.runLoop().runPosted();
    optionClickToggle();
    desktop_.advance(0.4);
    EXPECT_EQ(hiddenNames(), (Names{"a1", "a2", "a3", "h1", "h2"}));
    EXPECT_TRUE(alwaysHiddenNames().empty());
}

TEST_F(Snapshots, AreNotTakenWhereTheItemsAreHiddenBefore) {
    clickToggle();
    desktop_.advance(0.3);
    clickToggle();
    desktop_.advance(2);
    EXPECT_TRUE(desktop_.screenCapture().queries().empty());
    EXPECT_EQ(manager_->snapshot().date, distantPast);
}

TEST_F(Snapshots, AreTakenOnceForTwoRevealsInQuickSuccession) {
    clickToggle();
    desktop_.advance(0.2);
    optionClickToggle();
    desktop_.advance(0.399);
    EXPECT_TRUE(desktop_.screenCapture().queries().empty());
    desktop_.advance(0.001);
    EXPECT_EQ(desktop_.screenCapture().queries().size(), 1U);
    desktop_.advance(2);
    EXPECT_EQ(desktop_.screenCapture().queries().size(), 1U);
}

TEST_F(Snapshots, AreCancelledBeforeTheTaskHasBegunToWait) {
    clickToggle();
    optionClickToggle();
    desktop_.advance(0.4);
    EXPECT_EQ(desktop_.screenCapture().queries().size(), 1U);
}

TEST_F(Snapshots, FinishACaptureThatIsUnderWayWhenTheNextIsAsked) {
    desktop_.screenCapture().setQueryDuration(0.1);
    clickToggle();
    desktop_.advance(0.45);
    optionClickToggle();
    desktop_.advance(0.05);
    EXPECT_EQ(hiddenNames(), (Names{"h1", "h2"}));
    EXPECT_EQ(manager_->snapshot().date, desktop_.runLoop().now());
}

TEST_F(Snapshots, AreNotAskedForWithoutAccess) {
    desktop_.screenCapture().setGranted(false);
    clickToggle();
    EXPECT_EQ(desktop_.runLoop().timerCount(), 0U);
    desktop_.advance(1);
    EXPECT_TRUE(desktop_.screenCapture().queries().empty());
    EXPECT_EQ(desktop_.screenCapture().requestCount(), 0U);
}

TEST_F(Snapshots, LeaveThePendingOneWhereAccessIsLost) {
    clickToggle();
    desktop_.advance(0.1);
    desktop_.screenCapture().setGranted(false);
    optionClickToggle();
    desktop_.advance(0.3);
    EXPECT_EQ(hiddenNames(), (Names{"h1", "h2"})) << "Lists need no pictures.";
    EXPECT_EQ(alwaysHiddenNames(), (Names{"a1", "a2", "a3"}));
    EXPECT_TRUE(manager_->snapshot().images.empty());
}

TEST_F(Snapshots, KeepWhatIsKnownOfTheAlwaysHiddenSection) {
    takeSnapshot();
    desktop_.statusBar().moveLeftOf("h1", "a2");
    clickToggle();
    desktop_.statusBar().moveRightOf(alwaysHiddenDivider, "a2");
    desktop_.advance(0.4);
    EXPECT_EQ(hiddenNames(), (Names{"a2", "h1", "h2"}));
    EXPECT_EQ(alwaysHiddenNames(), (Names{"a1", "a3"}));
}

TEST_F(Snapshots, ReplaceTheListsAndKeepThePictures) {
    takeSnapshot();
    const auto pixels = std::get<Bitmap>(picture("a1")->content).pixels;
    const auto replaced = std::get<Bitmap>(picture("h2")->content).pixels;
    desktop_.screenCapture().setFails(windowOf("h1"));
    const auto kept = std::get<Bitmap>(picture("h1")->content).pixels;
    clickToggle();
    desktop_.advance(0.4);
    EXPECT_EQ(std::get<Bitmap>(picture("a1")->content).pixels, pixels);
    EXPECT_EQ(std::get<Bitmap>(picture("h1")->content).pixels, kept);
    EXPECT_NE(std::get<Bitmap>(picture("h2")->content).pixels, replaced);
    EXPECT_EQ(manager_->snapshot().images.size(), 5U);
}

TEST_F(Snapshots, KeepPicturesOfItemsThatAreGone) {
    takeSnapshot();
    const auto gone = windowOf("h1");
    desktop_.statusBar().removeOther("h1");
    clickToggle();
    desktop_.advance(0.4);
    EXPECT_EQ(hiddenNames(), Names{"h2"});
    EXPECT_EQ(manager_->snapshot().images.count(gone), 1U);
}

TEST_F(Snapshots, UpdateTheListsWhereNoPicturesCanBeHad) {
    desktop_.screenCapture().setShareableWindows(std::nullopt);
    clickToggle();
    desktop_.advance(0.4);
    EXPECT_EQ(hiddenNames(), (Names{"h1", "h2"}));
    EXPECT_TRUE(manager_->snapshot().images.empty());
}

TEST_F(Snapshots, ArePicturedAtTheScaleOfTheTogglesScreen) {
    Screen screen = SimulatedScreens::withMenuBar({0, 0, 1440, 900});
    screen.backingScaleFactor = 2;
    desktop_.screens().set({screen});
    clickToggle();
    desktop_.advance(0.4);
    EXPECT_EQ(desktop_.screenCapture().requests().front().configuration,
              (CaptureConfiguration{48, 52, false}));
}

TEST_F(Snapshots, AreSkippedWithoutAScreen) {
    takeSnapshot();
    const Date before = manager_->snapshot().date;
    clickToggle();
    desktop_.screens().set({});
    desktop_.advance(0.4);
    EXPECT_EQ(manager_->snapshot().date, before);
    EXPECT_EQ(hiddenNames(), (Names{"h1", "h2"}));
}

TEST_F(SnapshotsWithoutButtons, AreNotTakenAsNobodyKnowsWhereTheSectionsMeet) {
    ASSERT_TRUE(desktop_.screens().main());
    manager_->toggleHidden();
    desktop_.advance(1);
    EXPECT_EQ(level(), RevealLevel::hidden);
    EXPECT_EQ(manager_->snapshot().date, distantPast);
}

TEST_F(Snapshots, AreCancelledAnInstantBeforeTheyAreTaken) {
    clickToggle();
    desktop_.advance(0.399);
    optionClickToggle();
    desktop_.advance(0.399);
    EXPECT_TRUE(desktop_.screenCapture().queries().empty());
    desktop_.advance(0.001);
    EXPECT_EQ(desktop_.screenCapture().queries().size(), 1U);
    EXPECT_EQ(alwaysHiddenNames(), (Names{"a1", "a2", "a3"}));
}

TEST_F(Snapshots, FinishPicturesThatAreUnderWayWhenTheNextIsAsked) {
    desktop_.screenCapture().setDuration(windowOf("h1"), 0.1);
    clickToggle();
    desktop_.advance(0.45);
    optionClickToggle();
    desktop_.advance(0.049);
    EXPECT_EQ(manager_->snapshot().date, distantPast);
    desktop_.advance(0.001);
    EXPECT_EQ(manager_->snapshot().date, desktop_.runLoop().now());
    EXPECT_NE(picture("h1"), nullptr);
    EXPECT_EQ(pictureCount(), 2U);
    desktop_.advance(0.35);
    EXPECT_EQ(pictureCount(), 7U) << "The next follows all the same.";
}

}  // namespace
}  // namespace velmo
