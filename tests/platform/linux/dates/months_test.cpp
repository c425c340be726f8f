#include "calendar_places.h"
#include "command_output.h"
#include "linux/dates/icu/icu_date_engine.h"

#include <gtest/gtest.h>

namespace velmo {

namespace {

/// What the calendar's view asks for, but does not show of every month.
class Months : public testing::TestWithParam<CalendarPlace> {
protected:
    void checkMonth(const CountedMonth& counted, Date inside) const {
        ASSERT_EQ(calendar().dayCount(CalendarUnit::year, inside), counted.daysOfYear);
        for (const CountedDay& day : counted.days) {
            ASSERT_TRUE(calendar().isSameDay(day.start, day.start + 1)) << day.number;
            ASSERT_FALSE(calendar().isSameDay(day.start, day.start - 1)) << day.number;
        }
        ASSERT_TRUE(calendar().isSameMonth(counted.start, counted.end - 1));
        ASSERT_FALSE(calendar().isSameMonth(inside, counted.end));
    }

    const Calendar& calendar() const { return engine_.calendar(); }

    IcuDateEngine engine_{GetParam().locale, {.name = GetParam().zone, .file = zoneFile(GetParam().zone)}};
};

TEST_P(Months, EndAndFollowEachOtherAsByArithmetic) {
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
