#include "scenarios/scenario_test.h"
#include "scenarios/wall_clock.h"

#include <utility>

namespace velmo {
namespace {

class ClockScenario : public ScenarioTest {
protected:
    ClockScenario() {
        desktop_->store("clockEnabled", true);
        desktop_->setHoursFromUtc(3);
    }

    void setFormat(const std::string& pattern) { desktop_->store("clockFormat", pattern); }
    std::string title() { return desktop_->title(clock); }
    WallClock timeAhead(int hours) { return WallClock(desktop_->now() + 3600.0 * hours); }
    /// That of now, or of a moment ago.
    bool showsTheHour(int hours) {
        const std::string before = WallClock(desktop_->now() + 3600.0 * hours - 1).hour();
        return title() == before || title() == timeAhead(hours).hour();
    }
};

TEST_F(ClockScenario, ShowsEachFieldOfItsFormat) {
    using Field = std::string (WallClock::*)() const;
    const std::pair<const char*, Field> fields[] = {
        {"HH:mm", &WallClock::hourAndMinute}, {"h:mm a", &WallClock::twelveHourTime},
        {"EEE d MMM", &WallClock::shortDate}, {"EEEE, d MMMM yyyy", &WallClock::fullDate},
        {"MM/dd", &WallClock::monthAndDay},   {"'It is' yyyy", &WallClock::yearAfterText},
    };
    for (const auto& [pattern, field] : fields) {
        setFormat(pattern);
        run([&, field = field] {
            // The minute may have changed since.
            const std::string before = (WallClock(desktop_->now() + 3 * 3600 - 2).*field)();
            const std::string after = (timeAhead(3).*field)();
            EXPECT_TRUE(title() == before || title() == after) << title() << " is not " << after;
        });
    }
}

TEST_F(ClockScenario, TicksEachSecond) {
    setFormat("HH:mm:ss");
    run([&] {
        const std::string first = title();
        EXPECT_EQ(first.size(), 8U);
        EXPECT_TRUE(desktop_->happensAfter(1, [&] { return title() != first; }));
        const std::string last = title();
        EXPECT_TRUE(desktop_->happensAfter(1, [&] { return title() != last; }));
        const std::string before = WallClock(desktop_->now() + 3 * 3600 - 1).time();
        EXPECT_TRUE(title() == before || title() == timeAhead(3).time()) << title();
    });
}

TEST_F(ClockScenario, FollowsTheTimeZoneAtOnce) {
    setFormat("HH");
    run([&] {
        EXPECT_TRUE(showsTheHour(3)) << title();
        desktop_->setHoursFromUtc(-4);
        EXPECT_TRUE(showsTheHour(-4)) << title();
    });
}

TEST_F(ClockScenario, ShowsNothingForAnEmptyFormat) {
    setFormat("");
    run([&] {
        EXPECT_TRUE(desktop_->hasItem(clock));
        EXPECT_EQ(title(), "");
    });
}

TEST_F(ClockScenario, HasItsFormatOfItsOwnAtFirst) {
    run([&] {
        const std::string expected = timeAhead(3).shortDate() + "  " + timeAhead(3).hourAndMinute();
        const WallClock earlier(desktop_->now() + 3 * 3600 - 2);
        const std::string before = earlier.shortDate() + "  " + earlier.hourAndMinute();
        EXPECT_TRUE(title() == expected || title() == before) << title() << " is not " << expected;
        EXPECT_EQ(desktop_->toolTip(clock), "velmo clock — click for a calendar, ⌘-drag to move");
    });
}

TEST_F(ScenarioTest, ThereIsNoClockWhereItIsOff) {
    run([&] { EXPECT_FALSE(desktop_->hasItem(clock)); });
}

}  // namespace
}  // namespace velmo
