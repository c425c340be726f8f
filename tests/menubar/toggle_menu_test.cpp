#include "menubar/closure_menu_item.h"
#include "menubar/manager_test.h"

namespace velmo {
namespace {

using Titles = std::vector<std::string>;

class ToggleMenu : public ManagerTest {
protected:
    /// The titles of the menu that a right click shows.
    Titles titlesAt(const char* item) {
        Titles titles;
        desktop_.menus().setScript([&titles](SimulatedOpenMenu& menu) { titles = menu.titles(); });
        EXPECT_TRUE(desktop_.click(item, MouseButton::right));
        return titles;
    }
    void choose(const std::string& title) {
        bool found = false;
        desktop_.menus().setScript([&](SimulatedOpenMenu& menu) { found = menu.choose(title); });
        ASSERT_TRUE(desktop_.click(toggle, MouseButton::right));
        EXPECT_TRUE(found) << title;
    }
    /// Keeps the menus open for so long.
    void keepMenusOpen(Seconds seconds) {
        desktop_.menus().setScript([this, seconds](SimulatedOpenMenu&) { desktop_.advance(seconds); });
    }
};

TEST_F(ToggleMenu, HasAnAlwaysHiddenEntryAsSoonAsThatSectionIsOn) {
    start();
    preferences_->alwaysHiddenEnabled.set(true);
    EXPECT_EQ(titlesAt(toggle).size(), 7U);
    preferences_->alwaysHiddenEnabled.set(false);
    EXPECT_EQ(titlesAt(toggle).size(), 6U);
}

TEST_F(ToggleMenu, HasKeysForTheSettingsAndForQuitting) {
    desktop_.userDefaults().setBool(true, "alwaysHiddenEnabled");
    start();
    Titles keys;
    desktop_.menus().setScript([&keys](SimulatedOpenMenu& menu) {
        for (const auto& item : menu.menu().items)
            keys.push_back(item ? item->keyEquivalent() : "-");
    });
    ASSERT_TRUE(desktop_.click(toggle, MouseButton::right));
    EXPECT_EQ(keys, (Titles{"", "", "", "-", ",", "-", "q"}));
}

TEST_F(ToggleMenu, OpensJustUnderTheItemThatWasClicked) {
    desktop_.userDefaults().setBool(true, "alwaysHiddenEnabled");
    start();
    reveal(RevealLevel::all);
    std::vector<std::pair<std::string, Point>> places;
    desktop_.menus().setScript(
        [&places](SimulatedOpenMenu& menu) { places.emplace_back(menu.itemName(), menu.location()); });
    for (const char* item : {toggle, hiddenDivider, alwaysHiddenDivider})
        ASSERT_TRUE(desktop_.click(item, MouseButton::right));
    desktop_.statusBar().setThickness(37);
    ASSERT_TRUE(desktop_.click(toggle, MouseButton::right));
    EXPECT_EQ(
        places,
        (std::vector<std::pair<std::string, Point>>{
            {toggle, {0, 30}}, {hiddenDivider, {0, 30}}, {alwaysHiddenDivider, {0, 30}}, {toggle, {0, 41}}}));
}

TEST_F(ToggleMenu, OpensWhateverTheModifiersAndTheClickAction) {
    start();
    preferences_->clickAction.set(ClickAction::showPanel);
    desktop_.click(toggle, MouseButton::right, modifier::option);
    EXPECT_EQ(desktop_.menus().shownCount(), 1U);
    EXPECT_EQ(level(), RevealLevel::none);
}

TEST_F(ToggleMenu, DoesNotOpenAtAnExpandedDivider) {
    start();
    ASSERT_TRUE(desktop_.click(hiddenDivider, MouseButton::right));
    ControlItem divider(ControlItem::Kind::divider, "Test.Divider", desktop_.platform());
    divider.isExpanded = true;
    manager_->handleDividerClick(divider, {EventType::rightMouseUp});
    EXPECT_EQ(desktop_.menus().shownCount(), 0U);
    divider.isExpanded = false;
    manager_->handleDividerClick(divider, {EventType::rightMouseUp});
    EXPECT_EQ(desktop_.menus().shownCount(), 1U);
}

TEST_F(ToggleMenu, OpensOnlyAtTheReleaseOfTheRightButton) {
    start();
    desktop_.press(toggle, MouseButton::right);
    EXPECT_EQ(desktop_.menus().shownCount(), 0U);
    desktop_.release(toggle, MouseButton::right);
    EXPECT_EQ(desktop_.menus().shownCount(), 1U);
}

TEST_F(ToggleMenu, DoesNothingAtAnItemWithoutAButton) {
    desktop_.statusBar().setRefusesButtons(true);
    start();
    manager_->handleToggleClick({EventType::leftMouseUp});
    desktop_.advance(3);
    manager_->handleToggleClick({EventType::rightMouseUp});
    EXPECT_EQ(desktop_.menus().shownCount(), 0U);
    EXPECT_EQ(nextTimer(), 2);
}

TEST_F(ToggleMenu, OpensTheSettingsOnNoTab) {
    start();
    std::vector<std::optional<SettingsTab>> requests;
    manager_->onOpenSettings = [&](std::optional<SettingsTab> tab) { requests.push_back(tab); };
    choose("Settings…");
    EXPECT_EQ(requests, (std::vector<std::optional<SettingsTab>>{std::nullopt}));
    EXPECT_EQ(level(), RevealLevel::none);
}

TEST_F(ToggleMenu, OpensNoSettingsWhereNobodyWantsToKnow) {
    start();
    choose("Settings…");
    EXPECT_EQ(level(), RevealLevel::none);
}

TEST_F(ToggleMenu, KeepsTheItemsShownWhileItIsOpen) {
    start();
    reveal(RevealLevel::hidden);
    desktop_.advance(4.999);
    desktop_.menus().setScript([this](SimulatedOpenMenu&) {
        EXPECT_EQ(desktop_.runLoop().timerCount(), 0U);
        desktop_.advance(3600);
        EXPECT_EQ(level(), RevealLevel::hidden);
    });
    desktop_.click(hiddenDivider, MouseButton::right);
    EXPECT_EQ(desktop_.menus().shownCount(), 1U);
    EXPECT_EQ(level(), RevealLevel::hidden);
}

TEST_F(ToggleMenu, KeepsWhatIsRevealedWhileItIsOpenFromHidingOnTheTimer) {
    start();
    desktop_.menus().setScript([this](SimulatedOpenMenu&) {
        manager_->toggleHidden();
        EXPECT_EQ(nextTimer(), 5) << "a shortcut pressed meanwhile starts a timer of its own";
        desktop_.advance(3600);
        EXPECT_EQ(level(), RevealLevel::hidden);
    });
    desktop_.click(toggle, MouseButton::right);
    EXPECT_EQ(nextTimer(), 5);
    EXPECT_EQ(desktop_.runLoop().timerCount(), 1U);
    desktop_.advance(5);
    EXPECT_EQ(level(), RevealLevel::none);
}

TEST_F(ToggleMenu, KeepsAClickOutsideBeforeItFromHiding) {
    start();
    preferences_->autoRehide.set(false);
    reveal(RevealLevel::hidden);
    desktop_.movePointer({300, 300});
    desktop_.clickAtPointer();
    desktop_.advance(0.1);
    desktop_.menus().setScript([this](SimulatedOpenMenu&) {
        desktop_.advance(10);
        EXPECT_EQ(level(), RevealLevel::hidden);
    });
    desktop_.click(toggle, MouseButton::right);
    EXPECT_EQ(level(), RevealLevel::hidden);
}

TEST_F(ToggleMenu, StartsOneTimerAfterAChoice) {
    start();
    choose("Show Hidden Items");
    EXPECT_EQ(nextTimer(), 5);
    EXPECT_EQ(desktop_.runLoop().timerCount(), 1U);
}

TEST_F(ToggleMenu, StartsNoTimerWhereNothingIsShownOrHidingIsByHand) {
    start();
    desktop_.click(toggle, MouseButton::right);
    EXPECT_EQ(desktop_.runLoop().timerCount(), 0U);
    preferences_->autoRehide.set(false);
    reveal(RevealLevel::all);
    desktop_.click(toggle, MouseButton::right);
    EXPECT_EQ(desktop_.runLoop().timerCount(), 0U);
}

TEST_F(ToggleMenu, ReadsTheDelayWhenItHasClosed) {
    start();
    reveal(RevealLevel::hidden);
    desktop_.menus().setScript([this](SimulatedOpenMenu&) { preferences_->rehideDelay.set(9); });
    desktop_.click(toggle, MouseButton::right);
    EXPECT_EQ(nextTimer(), 9);
}

TEST_F(ToggleMenu, EndsTheClockPlacementWithTheUsualDelay) {
    start();
    manager_->revealForClockPlacement();
    keepMenusOpen(60);
    desktop_.click(toggle, MouseButton::right);
    EXPECT_EQ(level(), RevealLevel::hidden);
    EXPECT_EQ(nextTimer(), 5);
}

TEST_F(ToggleMenu, ActsOnTheLevelOfTheMomentOfTheChoice) {
    start();
    desktop_.menus().setScript([this](SimulatedOpenMenu& menu) {
        manager_->toggleHidden();
        menu.choose("Show Hidden Items");
    });
    desktop_.click(toggle, MouseButton::right);
    EXPECT_EQ(level(), RevealLevel::none);
}

TEST_F(ToggleMenu, MayOutliveTheManager) {
    start();
    reveal(RevealLevel::hidden);
    for (const char* title : {"Hide Items", "Open Hidden Items Panel", "Settings…"}) {
        desktop_.screenCapture().setGranted(false);
        manager_->onOpenSettings = [](std::optional<SettingsTab>) { FAIL(); };
        desktop_.menus().setScript([&](SimulatedOpenMenu& menu) {
            manager_.reset();
            EXPECT_TRUE(desktop_.runLoop().runUntilIdle());
            menu.choose(title);
        });
        desktop_.click(toggle, MouseButton::right);
        EXPECT_TRUE(desktop_.statusBar().items().empty());
        EXPECT_EQ(desktop_.runLoop().timerCount(), 0U);
        start();
        reveal(RevealLevel::hidden);
    }
    EXPECT_EQ(desktop_.screenCapture().requestCount(), 0U);
}

TEST_F(ToggleMenu, StillQuitsOnceTheManagerIsGone) {
    start();
    desktop_.menus().setScript([this](SimulatedOpenMenu& menu) {
        manager_.reset();
        menu.choose("Quit Velmo");
    });
    desktop_.click(toggle, MouseButton::right);
    EXPECT_EQ(desktop_.application().calls().size(), 1U);
}

TEST(ClosureMenuItem, RunsItsHandler) {
    int runs = 0;
    ClosureMenuItem item("Title", "k", [&runs] { ++runs; });
    EXPECT_EQ(item.title(), "Title");
    EXPECT_EQ(item.keyEquivalent(), "k");
    item.run();
    EXPECT_EQ(runs, 1);
    static_cast<MenuItem&>(item).performAction();
    EXPECT_EQ(runs, 2);
}

}  // namespace
}  // namespace velmo
