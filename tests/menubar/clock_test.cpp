#include "menubar/manager_test.h"

namespace velmo {
namespace {

constexpr const char* clock = "Velmo.Clock";

class ManagerClock : public ManagerTest {
protected:
    void startWithClock() {
        desktop_.userDefaults().setBool(true, "clockEnabled");
        start();
    }
    void setClock(bool enabled) {
        preferences_->clockEnabled.set(enabled);
        desktop_.runLoop().runPosted();
    }
};

TEST_F(ManagerClock, IsMadeAfterTheOtherItems) {
    startWithClock();
    EXPECT_EQ(desktop_.statusBar().items().back()->autosaveName(), clock);
    EXPECT_EQ(desktop_.statusBar().order().rightToLeft().back(), clock);
}

TEST_F(ManagerClock, RevealsNothingAtTheStart) {
    startWithClock();
    desktop_.advance(1);
    EXPECT_EQ(level(), RevealLevel::none);
}

TEST_F(ManagerClock, RevealsTheSectionsForFortyFiveSecondsWhereItIsSwitchedOn) {
    start();
    setClock(true);
    EXPECT_EQ(level(), RevealLevel::hidden);
    EXPECT_EQ(desktop_.runLoop().timerCount(), 2U);
    desktop_.advance(44.999);
    EXPECT_EQ(level(), RevealLevel::hidden);
    desktop_.advance(0.001);
    EXPECT_EQ(level(), RevealLevel::none);
}

TEST_F(ManagerClock, RevealsEvenWithoutHidingAgainByItself) {
    start();
    preferences_->autoRehide.set(false);
    preferences_->alwaysHiddenEnabled.set(true);
    setClock(true);
    EXPECT_EQ(level(), RevealLevel::all);
    desktop_.advance(45);
    EXPECT_EQ(level(), RevealLevel::none);
}

TEST_F(ManagerClock, StaysRevealedWhileThePointerIsInTheMenuBar) {
    start();
    setClock(true);
    desktop_.movePointer(inMenuBar);
    desktop_.advance(46.5);
    EXPECT_EQ(level(), RevealLevel::hidden);
    desktop_.movePointer(outside);
    desktop_.advance(0.499);
    EXPECT_EQ(level(), RevealLevel::hidden);
    desktop_.advance(0.001);
    EXPECT_EQ(level(), RevealLevel::none);
}

TEST_F(ManagerClock, RevealsNothingWhereItIsSwitchedOnAgainOrOff) {
    startWithClock();
    setClock(true);
    EXPECT_EQ(level(), RevealLevel::none);
    setClock(false);
    EXPECT_EQ(level(), RevealLevel::none);
}

TEST_F(ManagerClock, AsksForItsTabOfTheSettings) {
    startWithClock();
    // So that the clock is on the screen.
    optionClickToggle();
    desktop_.menus().setScript([](SimulatedOpenMenu& menu) { menu.choose("Clock Settings…"); });
    std::vector<std::optional<SettingsTab>> tabs;
    manager_->onOpenSettings = [&tabs](std::optional<SettingsTab> tab) { tabs.push_back(tab); };
    ASSERT_TRUE(desktop_.click(clock, MouseButton::right));
    EXPECT_EQ(tabs, std::vector<std::optional<SettingsTab>>{SettingsTab::clock});
}

TEST_F(ManagerClock, IsAmongTheOwnItems) {
    startWithClock();
    const auto without = [this] {
        setClock(false);
        return manager_->ownItemRanges();
    };
    reveal(RevealLevel::all);
    const auto ranges = manager_->ownItemRanges();
    const auto frame = *desktop_.statusBar().slot(clock)->frame;
    ASSERT_EQ(ranges.size(), 3U);
    EXPECT_EQ(ranges.back(), ClosedInterval(frame.minX() - 1, frame.maxX() + 1));
    EXPECT_EQ(without(), (std::vector<ClosedInterval>{ranges[0], ranges[1]}));
}

TEST_F(ManagerClock, IsAmongTheOwnItemsHoweverWideItIs) {
    desktop_.userDefaults().setObject("'" + std::string(200, 'x') + "'", "clockFormat");
    startWithClock();
    EXPECT_EQ(manager_->ownItemRanges().size(), 2U);
}

TEST_F(ManagerClock, GoesWithTheManager) {
    startWithClock();
    manager_.reset();
    EXPECT_TRUE(desktop_.statusBar().items().empty());
    EXPECT_EQ(desktop_.runLoop().timerCount(), 0U);
}

}  // namespace
}  // namespace velmo
