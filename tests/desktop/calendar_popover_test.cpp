#include "desktop_session.h"

#include <algorithm>
#include <cstdlib>
#include <ctime>
#include <fstream>
#include <functional>
#include <thread>
#include <utility>

namespace velmo::desktop {

namespace {

/// A time zone in which it is noon, so that no test meets midnight.
std::string zoneOfNoon() {
    constexpr int noon = 12;
    const std::time_t now = std::time(nullptr);
    std::tm utc{};
    gmtime_r(&now, &utc);
    // Hours west of Greenwich, as TZ counts them.
    const int west = utc.tm_hour - noon;
    return "NOON" + std::string(west < 0 ? "-" : "+") + std::to_string(std::abs(west));
}

/// A clock in the bar, and an ordinary window that has the keyboard.
class CalendarPopover : public DesktopSession {
protected:
    void SetUp() override {
        DesktopSession::SetUp();
        startServer();
    }

    void start(const std::string& format = "HH:mm",
               const nlohmann::json& order = {"Velmo.Toggle", "Velmo.Clock", "Velmo.Divider"}) {
        environment_["TZ"] = zoneOfNoon();
        writeDefaults({{"clockEnabled", true},
                       {"clockFormat", format},
                       {"autoRehide", false},
                       {"statusItemOrder", order}});
        startVelmo();
        ASSERT_TRUE(eventually([&] {
            const auto item = x().windowTitled("Velmo.Clock");
            return item && x().isViewable(*item) && x().area(*item)->width > 20;
        }));
        ordinary_ = startOrdinaryWindow();
        giveKeyboardTo(ordinary_);
    }
    void giveKeyboardTo(xcb_window_t window) const {
        xdotool({"windowactivate", "--sync", std::to_string(window)});
        ASSERT_TRUE(eventually([&] { return x().inputFocus() == window; }));
    }

    xcb_window_t clock() const {
        return x().windowTitled("Velmo.Clock").value_or(xcb_window_t{XCB_WINDOW_NONE});
    }
    std::optional<xcb_window_t> popover() const {
        const auto window = x().windowTitled("Velmo.Popover");
        return window && x().isViewable(*window) ? window : std::nullopt;
    }
    bool hasKeyboard() const {
        const auto shown = popover();
        return shown && x().inputFocus() == *shown;
    }
    void open() {
        click(clock());
        ASSERT_TRUE(eventually([&] { return hasKeyboard(); }));
        today_ = month();
    }
    bool isClosed() const {
        return eventually([&] { return !popover(); });
    }
    /// What has opened below the bar without a title.
    bool menuIsOpen() const {
        constexpr int barEnd = 26;
        const auto windows = x().children(x().root());
        return std::any_of(windows.begin(), windows.end(), [&](xcb_window_t window) {
            const auto area = x().area(window);
            return area && area->y >= barEnd && area->height > barEnd && x().isViewable(window) &&
                   window != x().windowTitled("Velmo.Popover") &&
                   x().property(window, "WM_CLASS").starts_with("velmo");
        });
    }
    void press(const std::string& key) const { xdotool({"key", key}); }
    void clickAt(int clickX, int clickY, int button = 1) const {
        xdotool(
            {"mousemove", std::to_string(clickX), std::to_string(clickY), "click", std::to_string(button)});
    }

    /// Header, days and footer, once the picture is complete.
    std::vector<std::uint32_t> month() const {
        // Pixels: the margin, time, date, hairline and buttons, which the passing time and the keyboard's
        // ring change.
        constexpr int abovePage = 114;
        const auto look = [&]() -> std::vector<std::uint32_t> {
            const auto place = x().area(popover().value_or(xcb_window_t{XCB_WINDOW_NONE}));
            if (!place || place->height <= abovePage)
                return {};
            return x().pixels({place->x, place->y + abovePage, place->width, place->height - abovePage});
        };
        auto picture = look();
        eventually([&] {
            std::this_thread::sleep_for(milliseconds(60));
            const auto next = look();
            return !next.empty() && next == std::exchange(picture, next);
        });
        return picture;
    }
    /// The month that follows an action.
    std::vector<std::uint32_t> monthAfter(const std::function<void()>& action) const {
        const auto before = month();
        action();
        auto after = before;
        EXPECT_TRUE(eventually([&] { return (after = month()) != before; })) << "another month";
        return after;
    }
    std::vector<std::uint32_t> monthAfter(const char* key) const {
        return monthAfter([&] { press(key); });
    }

    xcb_window_t ordinary_ = XCB_WINDOW_NONE;
    std::vector<std::uint32_t> today_;
};

class CalendarOnDesktop : public CalendarPopover {
protected:
    void SetUp() override {
        CalendarPopover::SetUp();
        startWindowManager();
    }
};

TEST_F(CalendarPopover, HasTheKeyboardAndGivesItBackUnderI3) {
    // Without a file it would ask for one; without a bar in it, its own would want to be the tray.
    const auto configuration = home_ / "i3.conf";
    std::ofstream(configuration) << "# i3 config file (v4)\nbar { i3bar_command true }\n";
    startWindowManager({"i3", "-c", configuration});
    start();
    open();
    monthAfter("Next");
    press("Escape");
    EXPECT_TRUE(isClosed());
    EXPECT_TRUE(eventually([&] { return x().inputFocus() == ordinary_; }));
}

TEST_F(CalendarOnDesktop, OpensUnderTheClock) {
    start("'A title as long as it takes to have room on both sides of its middle'");
    EXPECT_FALSE(popover());
    open();
    const auto item = *x().area(clock());
    const auto place = *x().area(*popover());
    EXPECT_EQ(place.width, 246);
    EXPECT_NEAR(place.midX(), item.midX(), 1);
    EXPECT_EQ(place.y, 26 + 6);
}

TEST_F(CalendarOnDesktop, StaysOnTheScreen) {
    start();
    open();
    const auto place = *x().area(*popover());
    EXPECT_EQ(place.x + place.width, 1280 - 8);
}

TEST_F(CalendarOnDesktop, ClosesOnAClickElsewhere) {
    start();
    open();
    clickAt(100, 650);
    EXPECT_TRUE(isClosed());
    for (const int button : {1, rightButton}) {
        open();
        click(ordinary_, button);
        EXPECT_TRUE(isClosed()) << button;
    }
    open();
    click(toggle());
    EXPECT_TRUE(isClosed()) << "also on another item of ours";
}

TEST_F(CalendarOnDesktop, StaysWhereItIsClickedItself) {
    start();
    open();
    const auto place = *x().area(*popover());
    clickAt(place.midX(), place.y + 40);
    EXPECT_TRUE(stays([&] { return hasKeyboard(); }, milliseconds(400)));
}

TEST_F(CalendarOnDesktop, ClosesOnEscape) {
    start();
    open();
    press("Escape");
    EXPECT_TRUE(isClosed());
}

TEST_F(CalendarOnDesktop, ClosesOnAClickOnTheClock) {
    start();
    open();
    click(clock());
    EXPECT_TRUE(isClosed());
    EXPECT_TRUE(stays([&] { return !popover(); }, milliseconds(400)));
    open();
}

TEST_F(CalendarOnDesktop, ClosesOnAClickOnAClockThatHasMovedMeanwhile) {
    start("HH:mm", {"gxkb.Gxkb", "Velmo.Toggle", "Velmo.Clock", "Velmo.Divider"});
    open();
    const auto before = *x().area(clock());
    startTrayProgram("gxkb", "Gxkb");
    ASSERT_TRUE(eventually([&] { return x().area(clock())->x < before.x; }));
    const auto now = *x().area(clock());
    ASSERT_TRUE(popover());
    // Where the clock was not before.
    clickAt(now.x + 4, now.midY());
    EXPECT_TRUE(isClosed());
    EXPECT_TRUE(stays([&] { return !popover(); }, milliseconds(400)));
    clickAt(now.midX(), now.midY());
    ASSERT_TRUE(eventually([&] { return popover().has_value(); }));
}

TEST_F(CalendarOnDesktop, ClosesOnAClickOnWhatHasComeWhereTheClockWas) {
    start("HH:mm", {"gxkb.Gxkb", "Velmo.Toggle", "Velmo.Clock", "Velmo.Divider"});
    open();
    const auto before = *x().area(clock());
    startTrayProgram("gxkb", "Gxkb");
    ASSERT_TRUE(eventually([&] { return x().area(clock())->x < before.x; }));
    ASSERT_LT(x().area(toggle())->midX(), before.x + before.width);
    click(toggle());
    EXPECT_TRUE(isClosed());
}

TEST_F(CalendarOnDesktop, MakesRoomForTheMenuOfTheClock) {
    start();
    open();
    EXPECT_FALSE(menuIsOpen());
    click(clock(), rightButton);
    EXPECT_TRUE(isClosed());
    EXPECT_TRUE(eventually([&] { return menuIsOpen(); }));
    press("Escape");
    EXPECT_TRUE(eventually([&] { return !menuIsOpen(); }));
    EXPECT_TRUE(stays([&] { return !popover(); }, milliseconds(400)));
}

TEST_F(CalendarOnDesktop, ClosesOnAMiddleClickOnTheClock) {
    start();
    open();
    click(clock(), 2);
    EXPECT_TRUE(isClosed());
    EXPECT_TRUE(stays([&] { return !popover(); }, milliseconds(400)));
}

TEST_F(CalendarOnDesktop, DoesNotStayWhereTheClockWasMovedAway) {
    start();
    open();
    superDrag(clock(), farLeft);
    EXPECT_TRUE(isClosed());
    EXPECT_TRUE(stays([&] { return !popover(); }, milliseconds(400)));
}

TEST_F(CalendarOnDesktop, IsTurnedByKeys) {
    start();
    open();
    const auto next = monthAfter("Next");
    EXPECT_NE(next, today_);
    EXPECT_EQ(monthAfter("Prior"), today_);
    const auto previous = monthAfter("Prior");
    EXPECT_NE(previous, today_);
    EXPECT_NE(previous, next);
    monthAfter("Prior");
    monthAfter("Prior");
    EXPECT_EQ(monthAfter("Home"), today_);
    EXPECT_EQ(monthAfter("Next"), next);
}

TEST_F(CalendarOnDesktop, BeginsAtTheCurrentMonthEachTime) {
    start();
    open();
    const auto today = today_;
    monthAfter("Next");
    press("Escape");
    ASSERT_TRUE(isClosed());
    open();
    EXPECT_EQ(today_, today);
}

TEST_F(CalendarOnDesktop, TabReachesEveryButton) {
    start();
    open();
    const auto next = monthAfter("Next");
    const auto pressed = [&] {
        press("Tab");
        press("space");
    };
    EXPECT_EQ(monthAfter(pressed), today_) << "backwards";
    monthAfter("Prior");
    EXPECT_EQ(monthAfter(pressed), today_) << "today, which passes the focus on";
    EXPECT_EQ(monthAfter("space"), next) << "forwards";
    EXPECT_EQ(monthAfter(pressed), today_) << "backwards, once round";
}

TEST_F(CalendarOnDesktop, GivesTheKeyboardBack) {
    start();
    const auto isBack = [&] { return eventually([&] { return x().inputFocus() == ordinary_; }); };
    open();
    press("Escape");
    EXPECT_TRUE(isBack());
    open();
    click(clock());
    EXPECT_TRUE(isBack());
    // The window manager gives it to nobody for a click on the desktop.
    open();
    clickAt(100, 650, 2);
    EXPECT_TRUE(isClosed());
    EXPECT_TRUE(isBack());
}

TEST_F(CalendarOnDesktop, GivesTheKeyboardBackAfterADoubleClickThatOpenedAndClosedIt) {
    start();
    const auto place = *x().area(clock());
    movePointer(place.midX(), place.midY());
    // Nothing of it has been made before, so that the second click comes while the first one opens it.
    xdotool({"click", "--repeat", "2", "--delay", "1", "1"});
    ASSERT_TRUE(comesToRest());
    ASSERT_TRUE(isClosed());
    EXPECT_EQ(x().inputFocus(), ordinary_);
    const auto other = startOrdinaryWindow("Other", "+700+300");
    giveKeyboardTo(other);
    open();
    press("Escape");
    EXPECT_TRUE(isClosed());
    EXPECT_TRUE(eventually([&] { return x().inputFocus() == other; }));
}

TEST_F(CalendarOnDesktop, LeavesTheKeyboardToTheWindowThatIsClicked) {
    start();
    const auto other = startOrdinaryWindow("Other", "+700+300");
    for (int round = 0; round < 10; ++round) {
        giveKeyboardTo(ordinary_);
        open();
        click(other);
        EXPECT_TRUE(isClosed());
        EXPECT_TRUE(eventually([&] { return x().inputFocus() == other; }));
        EXPECT_TRUE(stays([&] { return x().inputFocus() == other; }, milliseconds(150))) << round;
    }
}

}  // namespace

}  // namespace velmo::desktop
