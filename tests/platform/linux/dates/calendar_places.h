#pragma once

#include "run_loop.h"

#include <string>
#include <vector>

namespace velmo {

/// A country, and how days are counted there.
struct CalendarPlace {
    const char* name;
    const char* locale;
    const char* calendar;
    const char* zone;
    int firstWeekday;
    int leastDaysOfFirstWeek;
    int firstYear;
    std::vector<std::string> symbols;
    /// Weekdays from 1, Sunday.
    std::vector<int> weekend;
    /// Some days are shorter than 24 hours, and some are longer.
    bool changesClocks = false;
    /// Some days begin later than at 00:00.
    bool lacksMidnights = false;
};

const std::vector<CalendarPlace>& calendarPlaces();

struct CountedDay {
    Date start = 0;
    int week = 0;
    int dayOfYear = 0;
    int weekday = 0;
    int number = 0;
};

struct CountedMonth {
    Date start = 0;
    Date end = 0;
    /// Blanks before the first day in a grid.
    int leading = 0;
    int daysOfYear = 0;
    std::vector<CountedDay> days;
};

inline constexpr std::size_t countedMonths = 2000;

/// The months of a place, from the first of its first year on, counted without the program.
std::vector<CountedMonth> countMonths(const CalendarPlace& place);

}  // namespace velmo
