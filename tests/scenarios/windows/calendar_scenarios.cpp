#include "scenarios/scenario_test.h"
#include "scenarios/wall_clock.h"

namespace velmo {
namespace {

class CalendarScenario : public ScenarioTest {
protected:
    CalendarScenario() {
        desktop_->store("clockEnabled", true);
        desktop_->store("autoRehide", false);
        desktop_->setHoursFromUtc(hours);
    }

    /// Runs the program with its calendar open.
    void runCalendar(const std::function<void()>& user) {
        run([&] {
            // The clock is new, so that it is at the far left.
            reveal(RevealLevel::all);
            desktop_->click(clock);
            ASSERT_TRUE(calendar_.isShown());
            user();
        });
    }
    WallClock today() { return WallClock(desktop_->now() + 3600 * hours); }
    bool showsMonth(int monthsLater) { return calendar_.shows(today().monthAndYear(monthsLater)); }

    static constexpr int hours = 3;
    ScenarioWindow& calendar_ = desktop_->calendar();
};

TEST_F(CalendarScenario, TurnsItsMonths) {
    runCalendar([&] {
        EXPECT_TRUE(showsMonth(0));
        calendar_.press("Next month");
        EXPECT_TRUE(showsMonth(1));
        EXPECT_FALSE(showsMonth(0));
        calendar_.press("Previous month");
        EXPECT_TRUE(showsMonth(0));
        calendar_.press("Previous month");
        EXPECT_TRUE(showsMonth(-1));
        calendar_.press("Today");
        EXPECT_TRUE(showsMonth(0));
        EXPECT_FALSE(showsMonth(-1));
    });
}

TEST_F(CalendarScenario, HasEachDayOfEachMonthOfAYear) {
    runCalendar([&] {
        for (int month = 0; month < 12; ++month) {
            const int days = today().dayCount(month);
            for (int day = 1; day <= 31; ++day)
                EXPECT_EQ(calendar_.shows(std::to_string(day)), day <= days) << month << ' ' << day;
            calendar_.press("Next month");
        }
    });
}

TEST_F(CalendarScenario, ShowsTheTimeAsItGoesOn) {
    runCalendar([&] {
        const auto before = calendar_.texts();
        EXPECT_TRUE(desktop_->happensWithin(1, [&] { return calendar_.texts() != before; }));
    });
}

TEST_F(CalendarScenario, ClosesWithTheNextClickOnTheClock) {
    runCalendar([&] {
        desktop_->click(clock);
        EXPECT_FALSE(calendar_.isShown());
        desktop_->click(clock);
        EXPECT_TRUE(calendar_.isShown());
        // A click elsewhere.
        calendar_.close();
        EXPECT_FALSE(calendar_.isShown());
    });
}

TEST_F(CalendarScenario, BeginsAtTheCurrentMonthEachTime) {
    runCalendar([&] {
        calendar_.press("Next month");
        desktop_->click(clock);
        desktop_->click(clock);
        EXPECT_TRUE(showsMonth(0));
    });
}

}  // namespace
}  // namespace velmo
