#include "clock/clock_test.h"

namespace velmo {
namespace {

class ClockClicks : public ClockTest {
protected:
    ClockClicks() {
        desktop_.menus().setScript([this](SimulatedOpenMenu& menu) {
            titles_ = menu.titles();
            location_ = menu.location();
            for (const auto& item : menu.menu().items)
                hasKeys_ = hasKeys_ || (item && !item->keyEquivalent().empty());
            menu.choose(choice_);
        });
    }
    void choose(const char* title) {
        choice_ = title;
        rightClick();
        desktop_.runLoop().runPosted();
    }
    SimulatedPopover& popover() { return *popovers().front(); }
    std::string month() { return textsOf(popover().content().children.at(2)).at(0); }

    std::string choice_;
    std::vector<std::string> titles_;
    Point location_;
    bool hasKeys_ = false;
};

TEST_F(ClockClicks, ShowTheMenuForTheRightButton) {
    start();
    rightClick();
    EXPECT_EQ(titles_, (std::vector<std::string>{"Clock Settings…", "System Clock Options…", "-",
                                                 "Hide velmo Clock"}));
    EXPECT_FALSE(hasKeys_);
    EXPECT_EQ(location_, (Point{0, 30}));
    EXPECT_TRUE(popovers().empty());
}

TEST_F(ClockClicks, ShowTheMenuAndNeverThePopoverForTheRightButton) {
    start();
    click();
    rightClick();
    EXPECT_EQ(desktop_.menus().shownCount(), 1U);
    EXPECT_EQ(popovers().size(), 1U);
    EXPECT_TRUE(popover().isShown());
}

TEST_F(ClockClicks, AskForTheClockSettings) {
    start();
    int requests = 0;
    choose("Clock Settings…");
    clock_->onOpenSettings = [&requests] { ++requests; };
    choose("Clock Settings…");
    EXPECT_EQ(requests, 1);
}

TEST_F(ClockClicks, OpenTheOptionsOfTheSystemsClock) {
    start();
    choose("System Clock Options…");
    EXPECT_EQ(
        desktop_.workspace().opened(),
        std::vector<std::string>{"x-apple.systempreferences:com.apple.ControlCenter-Settings.extension"});
}

TEST_F(ClockClicks, HideTheClock) {
    start();
    choice_ = "Hide velmo Clock";
    rightClick();
    EXPECT_FALSE(preferences_.clockEnabled.value());
    EXPECT_NE(item(), nullptr);
    desktop_.runLoop().runPosted();
    EXPECT_EQ(item(), nullptr);
}

TEST_F(ClockClicks, GoOnTickingWhileTheMenuIsOpen) {
    preferences_.clockFormat.set("ss");
    start();
    std::string seen;
    desktop_.menus().setScript([&](SimulatedOpenMenu&) {
        desktop_.advance(3);
        seen = title();
    });
    rightClick();
    EXPECT_EQ(seen, "12");
}

TEST_F(ClockClicks, SurviveAClockThatIsSwitchedOffWhileItsMenuIsOpen) {
    start();
    desktop_.menus().setScript([&](SimulatedOpenMenu&) { setEnabled(false); });
    rightClick();
    EXPECT_EQ(item(), nullptr);
}

TEST_F(ClockClicks, OpenThePopoverBelowTheItem) {
    start();
    click();
    ASSERT_EQ(popovers().size(), 1U);
    EXPECT_TRUE(popover().isShown());
    EXPECT_EQ(popover().behavior(), PopoverBehavior::transient);
    EXPECT_EQ(popover().accessibilityLabel(), "Calendar");
    EXPECT_TRUE(popover().animates());
    EXPECT_EQ(popover().edge(), RectEdge::minY);
    EXPECT_EQ(popover().rect(), (Rect{0, 0, button().size().width, button().size().height}));
    EXPECT_EQ(desktop_.menus().shownCount(), 0U);
}

TEST_F(ClockClicks, ActivateTheApplicationBeforeThePopoverShows) {
    start();
    bool wasShown = true;
    desktop_.application().setActivationObserver([&] { wasShown = popover().isShown(); });
    click();
    EXPECT_FALSE(wasShown);
    EXPECT_EQ(desktop_.application().calls(),
              std::vector<SimulatedApplication::Call>{SimulatedApplication::Call::activate});
}

TEST_F(ClockClicks, CloseThePopoverThatIsShown) {
    start();
    click();
    click();
    ASSERT_EQ(popovers().size(), 1U);
    EXPECT_FALSE(popover().isShown());
    EXPECT_EQ(desktop_.application().calls().size(), 1U);
}

TEST_F(ClockClicks, OpenAFreshCalendarEachTime) {
    start();
    click();
    press(popover().content(), "Next month");
    EXPECT_EQ(month(), "August 2025");
    click();
    click();
    ASSERT_EQ(popovers().size(), 1U);
    EXPECT_TRUE(popover().isShown());
    EXPECT_EQ(month(), "July 2025");
}

TEST_F(ClockClicks, ShowTheTimePassingInThePopover) {
    start();
    click();
    EXPECT_TRUE(shows(popover().content(), "13:04:09"));
    EXPECT_EQ(desktop_.runLoop().timerCount(), 2U);
    desktop_.advance(1);
    EXPECT_TRUE(shows(popover().content(), "13:04:10"));
}

TEST_F(ClockClicks, LetNoTimePassInAPopoverThatIsClosed) {
    start();
    click();
    popover().clickOutside();
    EXPECT_EQ(desktop_.runLoop().timerCount(), 1U);
    desktop_.advance(5);
    EXPECT_TRUE(shows(popover().content(), "13:04:09"));
    click();
    EXPECT_TRUE(shows(popover().content(), "13:04:14"));
    EXPECT_EQ(desktop_.runLoop().timerCount(), 2U);
}

TEST_F(ClockClicks, CloseThePopoverWithTheClock) {
    start();
    click();
    bool wasClosedFirst = false;
    popover().setOnClose([&] { wasClosedFirst = item() != nullptr; });
    setEnabled(false);
    EXPECT_TRUE(wasClosedFirst);
    EXPECT_TRUE(popovers().empty());
    EXPECT_EQ(desktop_.runLoop().timerCount(), 0U);
}

TEST_F(ClockClicks, DoNothingWhereTheSystemHasNoPopovers) {
    start();
    desktop_.windows().setRefuses(true);
    click();
    click();
    EXPECT_EQ(desktop_.runLoop().timerCount(), 1U);
    setEnabled(false);
    EXPECT_EQ(item(), nullptr);
}

TEST_F(ClockClicks, DoNothingWithoutACurrentEvent) {
    start();
    button().action()();
    EXPECT_TRUE(popovers().empty());
    EXPECT_EQ(desktop_.menus().shownCount(), 0U);
}

TEST_F(ClockClicks, DoNothingOnceTheClockIsGone) {
    start();
    const auto action = button().action();
    clock_.reset();
    desktop_.application().handle({EventType::leftMouseUp}, action);
    EXPECT_TRUE(popovers().empty());
}

TEST(ClockClickTarget, DoesNothingWithoutHandlers) {
    SimulatedDesktop desktop;
    const ClockClickTarget target(desktop.application(), desktop.workspace());
    desktop.application().handle({EventType::leftMouseUp}, [&target] { target.clicked(); });
    target.openSettings();
    target.hideClock();
    EXPECT_TRUE(desktop.workspace().opened().empty());
}

}  // namespace
}  // namespace velmo
