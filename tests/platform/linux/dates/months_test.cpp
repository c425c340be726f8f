#include "calendar_places.h"
#include "command_output.h"
#include "linux/dates/icu/icu_date_engine.h"

#include <gtest/gtest.h>

namespace velmo {

namespace {

class Months : public testing::TestWithParam<CalendarPlace> {
protected:
    void checkDay(const CountedDay& counted, Date monthStart) const {
        const auto day = calendar().dateByAdding(CalendarUnit::day, counted.number - 1, monthStart);
        ASSERT_EQ(day, counted.start) << "day " << counted.number;
        ASSERT_EQ(calendar().component(CalendarUnit::day, *day), counted.number);
        ASSERT_EQ(calendar().component(CalendarUnit::weekday, *day), counted.weekday) << counted.start;
        ASSERT_EQ(calendar().component(CalendarUnit::weekOfYear, *day), counted.week) << counted.start;
        ASSERT_EQ(calendar().ordinalityOfDay(CalendarUnit::year, *day), counted.dayOfYear) << counted.start;
        ASSERT_TRUE(calendar().isSameDay(*day, *day + 1));
        ASSERT_FALSE(calendar().isSameDay(*day, *day - 1));
    }
    void checkMonth(const CountedMonth& counted, Date inside) const {
        const auto interval = calendar().dateInterval(CalendarUnit::month, inside);
        ASSERT_EQ(interval, (DateInterval{counted.start, counted.end}));
        ASSERT_EQ(calendar().dayCount(CalendarUnit::month, inside), counted.days.size());
        ASSERT_EQ(calendar().dayCount(CalendarUnit::year, inside), counted.daysOfYear);
        const int weekday = calendar().component(CalendarUnit::weekday, interval->start);
        ASSERT_EQ((weekday - calendar().firstWeekday() + 7) % 7, counted.leading);
        for (const CountedDay& day : counted.days)
            ASSERT_NO_FATAL_FAILURE(checkDay(day, interval->start));
        ASSERT_TRUE(calendar().isSameMonth(interval->start, interval->end - 1));
        ASSERT_FALSE(calendar().isSameMonth(inside, interval->end));
    }

    const Calendar& calendar() const { return engine_.calendar(); }

    IcuDateEngine engine_{GetParam().locale, {.name = GetParam().zone, .file = zoneFile(GetParam().zone)}};
};

TEST_P(Months, AreCountedAsByArithmetic) {
    EXPECT_EQ(calendar().firstWeekday(), GetParam().firstWeekday);
    EXPECT_EQ(calendar().veryShortStandaloneWeekdaySymbols(), GetParam().symbols);
    const auto months = countMonths(GetParam());
    for (std::size_t index = 0; index < months.size(); ++index) {
        const auto& month = months[index];
        const Date inside = month.start + (month.end - month.start) * static_cast<double>(index % 100) / 100;
        ASSERT_NO_FATAL_FAILURE(checkMonth(month, inside)) << "month " << index;
        if (index == 0)
            continue;
        const Date previous = months[index - 1].start;
        ASSERT_EQ(calendar().dateByAdding(CalendarUnit::month, 1, previous), month.start);
        ASSERT_EQ(calendar().dateByAdding(CalendarUnit::month, -1, month.start), previous);
    }
}

INSTANTIATE_TEST_SUITE_P(In, Months, testing::ValuesIn(calendarPlaces()),
                         [](const auto& test) { return test.param.name; });

}  // namespace

}  // namespace velmo
