#include "calendar_places.h"

#include "command_output.h"

#include <gtest/gtest.h>

#include <sstream>

namespace velmo {

namespace {

const std::vector<std::string> english = {"S", "M", "T", "W", "T", "F", "S"};
const std::vector<std::string> arabic = {"ح", "ن", "ث", "ر", "خ", "ج", "س"};

CountedMonth countedMonth(const std::string& line) {
    std::istringstream numbers(line);
    CountedMonth month;
    std::size_t dayCount = 0;
    numbers >> month.start >> month.end >> dayCount >> month.leading >> month.daysOfYear;
    month.days.resize(dayCount);
    for (CountedDay& day : month.days)
        numbers >> day.start >> day.week >> day.dayOfYear >> day.weekday >> day.number;
    EXPECT_TRUE(numbers) << line;
    return month;
}

}  // namespace

const std::vector<CalendarPlace>& calendarPlaces() {
    static const std::vector<CalendarPlace> places = {
        {.name = "Germany",
         .locale = "de_DE.UTF-8",
         .calendar = "gregorian",
         .zone = "Europe/Berlin",
         .firstWeekday = 2,
         .leastDaysOfFirstWeek = 4,
         .firstYear = 1970,
         .symbols = {"S", "M", "D", "M", "D", "F", "S"},
         .weekend = {7, 1},
         .changesClocks = true},
        {.name = "UnitedStates",
         .locale = "en_US.UTF-8",
         .calendar = "gregorian",
         .zone = "America/New_York",
         .firstWeekday = 1,
         .leastDaysOfFirstWeek = 1,
         .firstYear = 1970,
         .symbols = english,
         .weekend = {7, 1},
         .changesClocks = true},
        {.name = "Brazil",
         .locale = "pt_BR.UTF-8",
         .calendar = "gregorian",
         .zone = "America/Sao_Paulo",
         .firstWeekday = 1,
         .leastDaysOfFirstWeek = 1,
         .firstYear = 1970,
         .symbols = {"D", "S", "T", "Q", "Q", "S", "S"},
         .weekend = {7, 1},
         .changesClocks = true,
         .lacksMidnights = true},
        {.name = "Paraguay",
         .locale = "es_PY.UTF-8",
         .calendar = "gregorian",
         .zone = "America/Asuncion",
         .firstWeekday = 1,
         .leastDaysOfFirstWeek = 1,
         .firstYear = 1970,
         .symbols = {"D", "L", "M", "M", "J", "V", "S"},
         .weekend = {7, 1},
         .changesClocks = true,
         .lacksMidnights = true},
        {.name = "Egypt",
         .locale = "ar_EG.UTF-8",
         .calendar = "gregorian",
         .zone = "Africa/Cairo",
         .firstWeekday = 7,
         .leastDaysOfFirstWeek = 1,
         .firstYear = 1970,
         .symbols = arabic,
         .weekend = {6, 7},
         .changesClocks = true,
         .lacksMidnights = true},
        {.name = "Lebanon",
         .locale = "ar_LB.UTF-8",
         .calendar = "gregorian",
         .zone = "Asia/Beirut",
         .firstWeekday = 2,
         .leastDaysOfFirstWeek = 1,
         .firstYear = 1970,
         .symbols = arabic,
         .weekend = {7, 1},
         .changesClocks = true,
         .lacksMidnights = true},
        {.name = "Maldives",
         .locale = "en_MV.UTF-8",
         .calendar = "gregorian",
         .zone = "Indian/Maldives",
         .firstWeekday = 6,
         .leastDaysOfFirstWeek = 1,
         .firstYear = 1970,
         .symbols = english,
         .weekend = {7, 1}},
        {.name = "Thailand",
         .locale = "th_TH.UTF-8",
         .calendar = "buddhist",
         .zone = "Asia/Bangkok",
         .firstWeekday = 1,
         .leastDaysOfFirstWeek = 1,
         .firstYear = 2513,
         .symbols = {"อา", "จ", "อ", "พ", "พฤ", "ศ", "ส"},
         .weekend = {7, 1}},
        {.name = "Iran",
         .locale = "fa_IR",
         .calendar = "persian",
         .zone = "Asia/Tehran",
         .firstWeekday = 7,
         .leastDaysOfFirstWeek = 1,
         .firstYear = 1349,
         .symbols = {"ی", "د", "س", "چ", "پ", "ج", "ش"},
         .weekend = {6},
         .changesClocks = true,
         .lacksMidnights = true},
        // ICU lets the year 5807, in 2046, begin a day late.
        {.name = "Israel",
         .locale = "he_IL.UTF-8@calendar=hebrew",
         .calendar = "hebrew",
         .zone = "Asia/Jerusalem",
         .firstWeekday = 1,
         .leastDaysOfFirstWeek = 1,
         .firstYear = 5643,
         .symbols = {"א׳", "ב׳", "ג׳", "ד׳", "ה׳", "ו׳", "ש׳"},
         .weekend = {6, 7},
         .changesClocks = true,
         .lacksMidnights = true},
        {.name = "LordHowe",
         .locale = "en_AU.UTF-8",
         .calendar = "gregorian",
         .zone = "Australia/Lord_Howe",
         .firstWeekday = 2,
         .leastDaysOfFirstWeek = 1,
         .firstYear = 1982,
         .symbols = {"Su.", "M.", "Tu.", "W.", "Th.", "F.", "Sa."},
         .weekend = {7, 1},
         .changesClocks = true},
    };
    return places;
}

std::vector<CountedMonth> countMonths(const CalendarPlace& place) {
    std::ostringstream command;
    command << "/usr/bin/python3 " << testFile("count_days.py") << ' ' << place.calendar << ' ' << place.zone
            << ' ' << place.firstWeekday << ' ' << place.leastDaysOfFirstWeek << ' ' << place.firstYear << ' '
            << countedMonths;
    bool succeeded = false;
    std::istringstream lines(commandOutput(command.str(), succeeded));
    EXPECT_TRUE(succeeded);
    std::vector<CountedMonth> months;
    for (std::string line; std::getline(lines, line);)
        months.push_back(countedMonth(line));
    EXPECT_EQ(months.size(), countedMonths);
    return months;
}

}  // namespace velmo
