#include "settings/settings_test.h"
#include "views/view_outline.h"

#include <algorithm>
#include <cstddef>
#include <string>
#include <utility>
#include <vector>

namespace velmo {
namespace {

class SettingsWindow : public SettingsTest {
protected:
    /// How often the window was told what it shows since the last time.
    std::ptrdiff_t descriptions() {
        const auto& calls = window().calls();
        const auto count = std::count(calls.begin(), calls.end(), "setContent");
        return count - std::exchange(descriptionsSeen_, count);
    }

private:
    std::ptrdiff_t descriptionsSeen_ = 0;
};

TEST_F(SettingsWindow, IsTitledAndClosableAndOfOneSize) {
    open();
    EXPECT_EQ(window().title(), "Velmo Settings");
    EXPECT_EQ(window().styleMask(), 7U);
    EXPECT_FALSE(window().isReleasedWhenClosed());
    EXPECT_EQ(content().modifiers, (std::vector<Modifier>{Frame{540, 500}}));
}

TEST_F(SettingsWindow, IsShownWithItsContentAfterItsRememberedPlaceIsTaken) {
    open();
    EXPECT_EQ(window().frameAutosaveName(), "Velmo.SettingsWindow");
    EXPECT_EQ(window().calls(), (std::vector<std::string>{"center", "setFrameAutosaveName", "setContent",
                                                          "makeKeyAndOrderFront"}));
}

TEST_F(SettingsWindow, HasFiveTabsInTheirOrder) {
    open();
    std::vector<std::array<std::string, 3>> seen;
    for (const TabItem& item : tabs().tabs)
        seen.push_back({item.tag, item.title, std::get<Symbol>(item.image.content).name});
    EXPECT_EQ(seen,
              (std::vector<std::array<std::string, 3>>{{"general", "General", "gearshape"},
                                                       {"hiding", "Hiding", "eye.slash"},
                                                       {"clock", "Clock", "clock"},
                                                       {"panel", "Panel", "rectangle.topthird.inset.filled"},
                                                       {"spacing", "Spacing", "arrow.left.and.right"}}));
    EXPECT_EQ(content().children.size(), 5U);
    EXPECT_EQ(tabs().selection, "general");
}

TEST_F(SettingsWindow, LooksAsOutlined) {
    open();
    for (const TabItem& item : tabs().tabs) {
        open(settingsTabFromRawValue(item.tag));
        expectOutline(shown(), "settings_" + item.tag);
    }
}

TEST_F(SettingsWindow, OffersNoSpacingInASandbox) {
    LoginItemManager loginItem(desktop_.loginService());
    SettingsState state;
    SettingsView view(
        preferences_, loginItem, state, [] {}, false, desktop_.platform());
    const View body = view.body();
    EXPECT_EQ(std::get<TabView>(body.content).tabs.size(), 4U);
    EXPECT_EQ(body.children.size(), 4U);
    EXPECT_FALSE(shows(body, "Spacing"));
    state.selectedTab.set(SettingsTab::clock);
    EXPECT_EQ(std::get<TabView>(view.body().content).selection, "clock");
    state.selectedTab.set(SettingsTab::spacing);
    EXPECT_EQ(std::get<TabView>(view.body().content).selection, "general") << "where the tab is not there";
}

TEST_F(SettingsWindow, IsTheSameOneEachTime) {
    open();
    open(SettingsTab::panel);
    window().close();
    open();
    EXPECT_EQ(desktop_.windows().windows().size(), 1U);
    EXPECT_TRUE(window().isVisible());
}

TEST_F(SettingsWindow, KeepsTheTabThatTheUserLeftSelected) {
    open();
    chooseTab(content(), "Hiding");
    runPosted();
    EXPECT_EQ(tabs().selection, "hiding");
    open();
    EXPECT_EQ(tabs().selection, "hiding");
    window().close();
    open();
    EXPECT_EQ(tabs().selection, "hiding");
}

TEST_F(SettingsWindow, SwitchesTheTabInPlace) {
    open(SettingsTab::clock);
    EXPECT_EQ(tabs().selection, "clock");
    controller_->show(SettingsTab::panel);
    EXPECT_EQ(tabs().selection, "panel");
}

TEST_F(SettingsWindow, ShowsAStartAtLoginThatWasChangedElsewhereTheNextTime) {
    open();
    desktop_.loginService().setStatus(LoginServiceStatus::enabled);
    desktop_.advance(3);
    EXPECT_FALSE(isOn("Launch at login"));
    controller_->show(std::nullopt);
    EXPECT_TRUE(isOn("Launch at login"));
    window().close();
    desktop_.loginService().setStatus(LoginServiceStatus::requiresApproval);
    controller_->show(std::nullopt);
    EXPECT_FALSE(isOn("Launch at login"));
}

TEST_F(SettingsWindow, ShowsChangesMadeElsewhere) {
    open(SettingsTab::hiding);
    preferences_->showOnScroll.set(true);
    EXPECT_FALSE(isOn("Show or hide by scrolling on the menu bar"));
    runPosted();
    EXPECT_TRUE(isOn("Show or hide by scrolling on the menu bar"));
}

TEST_F(SettingsWindow, IsDescribedOnceForAllChangesOfATurn) {
    open(SettingsTab::hiding);
    descriptions();
    preferences_->showOnScroll.set(true);
    preferences_->rehideDelay.set(9);
    preferences_->rehideDelay.set(10);
    EXPECT_EQ(descriptions(), 0);
    runPosted();
    EXPECT_EQ(descriptions(), 1);
    preferences_->rehideDelay.set(11);
    runPosted();
    EXPECT_EQ(descriptions(), 1);
}

TEST_F(SettingsWindow, IsNotDescribedWhereNothingChanges) {
    open(SettingsTab::panel);
    descriptions();
    preferences_->showOnScroll.set(false);
    desktop_.advance(10);
    EXPECT_EQ(descriptions(), 0);
}

TEST_F(SettingsWindow, IsNotDescribedWhileItIsClosed) {
    open(SettingsTab::clock);
    window().close();
    descriptions();
    preferences_->clockEnabled.set(true);
    desktop_.advance(10);
    EXPECT_EQ(descriptions(), 0);
    controller_->show(std::nullopt);
    EXPECT_TRUE(isOn("Show a clock and calendar in the menu bar"));
}

TEST_F(SettingsWindow, IsDescribedEverySecondOnTheClockTab) {
    open(SettingsTab::clock);
    descriptions();
    desktop_.advance(3);
    EXPECT_EQ(descriptions(), 3);
}

TEST_F(SettingsWindow, IsMissingWhereTheSystemShowsNone) {
    desktop_.windows().setRefuses(true);
    open();
    const auto timers = desktop_.runLoop().timerCount();
    open(SettingsTab::clock);
    EXPECT_EQ(desktop_.runLoop().timerCount(), timers) << "nothing counts seconds that nobody sees";
    preferences_->clockEnabled.set(true);
    desktop_.advance(3);
    EXPECT_TRUE(desktop_.windows().windows().empty());
}

TEST_F(SettingsWindow, LeavesNothingBehind) {
    open(SettingsTab::clock);
    preferences_->clockEnabled.set(true);
    controller_.reset();
    EXPECT_TRUE(desktop_.windows().windows().empty());
    EXPECT_EQ(desktop_.runLoop().timerCount(), 0U);
    runPosted();
    preferences_->clockEnabled.set(false);
    EXPECT_EQ(desktop_.runLoop().postedCount(), 0U);
}

}  // namespace
}  // namespace velmo
