#include "command_output.h"
#include "linux/dates/icu/icu_date_engine.h"

#include <gtest/gtest.h>

#include <sstream>

namespace velmo {

namespace {

struct CalendarPlace {
    const char* name;
    const char* locale;
    const char* calendar;
    const char* zone;
    int firstWeekday;
    int leastDaysOfFirstWeek;
    int firstYear;
    std::vector<std::string> symbols;
};

const std::vector<std::string> english = {"S", "M", "T", "W", "T", "F", "S"};
const std::vector<std::string> arabic = {"ح", "ن", "ث", "ر", "خ", "ج", "س"};
constexpr int monthCount = 2000;

class Months : public testing::TestWithParam<CalendarPlace> {
protected:
    void checkDay(std::istream& days, Date monthStart, int index) const {
        long start = 0;
        int week = 0;
        int dayOfYear = 0;
        int weekday = 0;
        int number = 0;
        ASSERT_TRUE(days >> start >> week >> dayOfYear >> weekday >> number);
        const auto day = calendar().dateByAdding(CalendarUnit::day, index, monthStart);
        ASSERT_EQ(day, start) << "day " << number;
        ASSERT_EQ(calendar().component(CalendarUnit::day, *day), number);
        ASSERT_EQ(calendar().component(CalendarUnit::weekday, *day), weekday) << start;
        ASSERT_EQ(calendar().component(CalendarUnit::weekOfYear, *day), week) << start;
        ASSERT_EQ(calendar().ordinalityOfDay(CalendarUnit::year, *day), dayOfYear) << start;
        ASSERT_TRUE(calendar().isSameDay(*day, *day + 1));
        ASSERT_FALSE(calendar().isSameDay(*day, *day - 1));
    }

    const Calendar& calendar() const { return engine_.calendar(); }

    IcuDateEngine engine_{GetParam().locale, {.name = GetParam().zone, .file = zoneFile(GetParam().zone)}};
};

TEST_P(Months, AreCountedAsByArithmetic) {
    const auto& place = GetParam();
    EXPECT_EQ(calendar().firstWeekday(), place.firstWeekday);
    EXPECT_EQ(calendar().veryShortStandaloneWeekdaySymbols(), place.symbols);
    std::ostringstream command;
    command << "/usr/bin/python3 " << testFile("count_days.py") << ' ' << place.calendar << ' ' << place.zone
            << ' ' << place.firstWeekday << ' ' << place.leastDaysOfFirstWeek << ' ' << place.firstYear << ' '
            << monthCount;
    bool succeeded = false;
    std::istringstream lines(commandOutput(command.str(), succeeded));
    ASSERT_TRUE(succeeded);

    int months = 0;
    Date previous = 0;
    for (std::string line; std::getline(lines, line); ++months) {
        std::istringstream numbers(line);
        long start = 0;
        long end = 0;
        int count = 0;
        int leading = 0;
        int yearLength = 0;
        ASSERT_TRUE(numbers >> start >> end >> count >> leading >> yearLength);
        const Date inside = static_cast<double>(start + (end - start) * (months % 100) / 100);
        const auto interval = calendar().dateInterval(CalendarUnit::month, inside);
        ASSERT_EQ(interval, (DateInterval{static_cast<double>(start), static_cast<double>(end)})) << line;
        ASSERT_EQ(calendar().dayCount(CalendarUnit::month, inside), count) << line;
        ASSERT_EQ(calendar().dayCount(CalendarUnit::year, inside), yearLength) << line;
        const int weekday = calendar().component(CalendarUnit::weekday, interval->start);
        ASSERT_EQ((weekday - calendar().firstWeekday() + 7) % 7, leading) << line;
        for (int day = 0; day < count; ++day)
            ASSERT_NO_FATAL_FAILURE(checkDay(numbers, interval->start, day)) << line;
        ASSERT_TRUE(calendar().isSameMonth(interval->start, interval->end - 1));
        ASSERT_FALSE(calendar().isSameMonth(inside, interval->end));
        if (months > 0) {
            ASSERT_EQ(calendar().dateByAdding(CalendarUnit::month, 1, previous), start);
            ASSERT_EQ(calendar().dateByAdding(CalendarUnit::month, -1, static_cast<double>(start)), previous);
        }
        previous = static_cast<double>(start);
    }
    EXPECT_EQ(months, monthCount);
}

INSTANTIATE_TEST_SUITE_P(
    In, Months,
    testing::Values(
        CalendarPlace{"Germany",
                      "de_DE.UTF-8",
                      "gregorian",
                      "Europe/Berlin",
                      2,
                      4,
                      1970,
                      {"S", "M", "D", "M", "D", "F", "S"}},
        CalendarPlace{"UnitedStates", "en_US.UTF-8", "gregorian", "America/New_York", 1, 1, 1970, english},
        CalendarPlace{"Brazil",
                      "pt_BR.UTF-8",
                      "gregorian",
                      "America/Sao_Paulo",
                      1,
                      1,
                      1970,
                      {"D", "S", "T", "Q", "Q", "S", "S"}},
        CalendarPlace{"Paraguay",
                      "es_PY.UTF-8",
                      "gregorian",
                      "America/Asuncion",
                      1,
                      1,
                      1970,
                      {"D", "L", "M", "M", "J", "V", "S"}},
        CalendarPlace{"Egypt", "ar_EG.UTF-8", "gregorian", "Africa/Cairo", 7, 1, 1970, arabic},
        CalendarPlace{"Lebanon", "ar_LB.UTF-8", "gregorian", "Asia/Beirut", 2, 1, 1970, arabic},
        CalendarPlace{"Maldives", "en_MV.UTF-8", "gregorian", "Indian/Maldives", 6, 1, 1970, english},
        CalendarPlace{"Thailand",
                      "th_TH.UTF-8",
                      "buddhist",
                      "Asia/Bangkok",
                      1,
                      1,
                      2513,
                      {"อา", "จ", "อ", "พ", "พฤ", "ศ", "ส"}},
        CalendarPlace{
            "Iran", "fa_IR", "persian", "Asia/Tehran", 7, 1, 1349, {"ی", "د", "س", "چ", "پ", "ج", "ش"}},
        // ICU lets the year 5807, in 2046, begin a day late.
        CalendarPlace{"Israel",
                      "he_IL.UTF-8@calendar=hebrew",
                      "hebrew",
                      "Asia/Jerusalem",
                      1,
                      1,
                      5643,
                      {"א׳", "ב׳", "ג׳", "ד׳", "ה׳", "ו׳", "ש׳"}},
        CalendarPlace{"LordHowe",
                      "en_AU.UTF-8",
                      "gregorian",
                      "Australia/Lord_Howe",
                      2,
                      1,
                      1982,
                      {"Su.", "M.", "Tu.", "W.", "Th.", "F.", "Sa."}}),
    [](const auto& test) { return test.param.name; });

}  // namespace

}  // namespace velmo
