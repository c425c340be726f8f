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
        {"Germany",
         "de_DE.UTF-8",
         "gregorian",
         "Europe/Berlin",
         2,
         4,
         1970,
         {"S", "M", "D", "M", "D", "F", "S"},
         {7, 1},
         true,
         false},
        {"UnitedStates",
         "en_US.UTF-8",
         "gregorian",
         "America/New_York",
         1,
         1,
         1970,
         english,
         {7, 1},
         true,
         false},
        {"Brazil",
         "pt_BR.UTF-8",
         "gregorian",
         "America/Sao_Paulo",
         1,
         1,
         1970,
         {"D", "S", "T", "Q", "Q", "S", "S"},
         {7, 1},
         true,
         true},
        {"Paraguay",
         "es_PY.UTF-8",
         "gregorian",
         "America/Asuncion",
         1,
         1,
         1970,
         {"D", "L", "M", "M", "J", "V", "S"},
         {7, 1},
         true,
         true},
        {"Egypt", "ar_EG.UTF-8", "gregorian", "Africa/Cairo", 7, 1, 1970, arabic, {6, 7}, true, true},
        {"Lebanon", "ar_LB.UTF-8", "gregorian", "Asia/Beirut", 2, 1, 1970, arabic, {7, 1}, true, true},
        {"Maldives",
         "en_MV.UTF-8",
         "gregorian",
         "Indian/Maldives",
         6,
         1,
         1970,
         english,
         {7, 1},
         false,
         false},
        {"Thailand",
         "th_TH.UTF-8",
         "buddhist",
         "Asia/Bangkok",
         1,
         1,
         2513,
         {"อา", "จ", "อ", "พ", "พฤ", "ศ", "ส"},
         {7, 1},
         false,
         false},
        {"Iran",
         "fa_IR",
         "persian",
         "Asia/Tehran",
         7,
         1,
         1349,
         {"ی", "د", "س", "چ", "پ", "ج", "ش"},
         {6},
         true,
         true},
        // ICU lets the year 5807, in 2046, begin a day late.
        {"Israel",
         "he_IL.UTF-8@calendar=hebrew",
         "hebrew",
         "Asia/Jerusalem",
         1,
         1,
         5643,
         {"א׳", "ב׳", "ג׳", "ד׳", "ה׳", "ו׳", "ש׳"},
         {6, 7},
         true,
         true},
        {"LordHowe",
         "en_AU.UTF-8",
         "gregorian",
         "Australia/Lord_Howe",
         2,
         1,
         1982,
         {"Su.", "M.", "Tu.", "W.", "Th.", "F.", "Sa."},
         {7, 1},
         true,
         false},
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
