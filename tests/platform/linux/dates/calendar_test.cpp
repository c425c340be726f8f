#include "command_output.h"
#include "linux/dates/icu/icu_date_engine.h"

#include <gtest/gtest.h>

#include <limits>

namespace velmo {

namespace {

constexpr Date hour = 3600;

/// Days in one zone, with dates as their patterns write them.
class Days {
public:
    explicit Days(const char* zone) : engine_("en_GB", {.name = zone, .file = zoneFile(zone)}) {
        formatter_ = engine_.makeDateFormatter();
        formatter_->setDateFormat("y-MM-dd HH:mm");
    }

    const Calendar& calendar() const { return engine_.calendar(); }
    std::string text(std::optional<Date> date) const {
        return date ? formatter_->string(*date).value_or("?") : "(none)";
    }
    Date startOfMonth(Date date) const {
        return calendar().dateInterval(CalendarUnit::month, date).value_or(DateInterval{}).start;
    }

private:
    IcuDateEngine engine_;
    std::unique_ptr<DateFormatter> formatter_;
};

TEST(CalendarDays, DayWithoutMidnightBeginsAtOne) {
    const Days days("America/Sao_Paulo");
    constexpr Date october = 1508000000;  // 2017-10-14
    const Date month = days.startOfMonth(october);
    ASSERT_EQ(days.text(month), "2017-10-01 00:00");
    const auto day = [&](int index) { return days.calendar().dateByAdding(CalendarUnit::day, index, month); };
    EXPECT_EQ(days.text(day(13)), "2017-10-14 00:00");
    EXPECT_EQ(days.text(day(14)), "2017-10-15 01:00");
    EXPECT_EQ(days.text(day(15)), "2017-10-16 00:00");
    EXPECT_EQ(*day(15) - *day(14), 23 * hour);
    EXPECT_FALSE(days.calendar().isSameDay(*day(14) - 1, *day(14)));
    EXPECT_TRUE(days.calendar().isSameDay(*day(14), *day(15) - 1));
}

TEST(CalendarDays, MonthWhoseFirstDayBeginsAtOneHasItsOtherDaysFromMidnight) {
    const Days days("America/Asuncion");
    constexpr Date october = 1507000000;  // 2017-10-03
    const auto month = days.calendar().dateInterval(CalendarUnit::month, october);
    ASSERT_TRUE(month);
    ASSERT_EQ(days.text(month->start), "2017-10-01 01:00");
    EXPECT_EQ(days.text(month->end), "2017-11-01 00:00");
    EXPECT_EQ(days.calendar().dayCount(CalendarUnit::month, october), 31);
    for (int index = 1; index < 31; ++index) {
        const auto day = days.calendar().dateByAdding(CalendarUnit::day, index, month->start);
        ASSERT_TRUE(days.text(day).ends_with(" 00:00")) << days.text(day);
        ASSERT_EQ(days.calendar().component(CalendarUnit::day, *day), index + 1);
    }
    EXPECT_EQ(days.text(days.calendar().dateByAdding(CalendarUnit::month, -1, month->start)),
              "2017-09-01 00:00");
    EXPECT_EQ(days.text(days.calendar().dateByAdding(CalendarUnit::month, 12, month->start)),
              "2018-10-01 00:00");
}

TEST(CalendarDays, DayWithTwoMidnightsBeginsAtTheFirst) {
    const Days days("America/Havana");
    constexpr Date november = 1509900000;  // 2017-11-05
    const auto month = days.calendar().dateInterval(CalendarUnit::month, november);
    ASSERT_TRUE(month);
    const auto fifth = days.calendar().dateByAdding(CalendarUnit::day, 4, month->start);
    const auto sixth = days.calendar().dateByAdding(CalendarUnit::day, 5, month->start);
    EXPECT_EQ(*sixth - *fifth, 25 * hour);
    EXPECT_EQ(days.text(fifth), "2017-11-05 00:00");
    EXPECT_EQ(days.text(*fifth + hour), "2017-11-05 00:00");
    EXPECT_TRUE(days.calendar().isSameDay(*fifth, *fifth + hour));
    EXPECT_FALSE(days.calendar().isSameDay(*fifth, *fifth - 1));
}

TEST(CalendarDays, TimeOfDayStaysAcrossChangesOfTheClocks) {
    const Days days("Europe/Berlin");
    constexpr Date afternoon = 1774706400;  // 2026-03-28 15:00
    ASSERT_EQ(days.text(afternoon), "2026-03-28 15:00");
    const auto next = days.calendar().dateByAdding(CalendarUnit::day, 1, afternoon);
    EXPECT_EQ(days.text(next), "2026-03-29 15:00");
    EXPECT_EQ(*next - afternoon, 23 * hour);
    EXPECT_EQ(days.text(days.calendar().dateByAdding(CalendarUnit::day, -2, *next)), "2026-03-27 15:00");
    constexpr Date inTheGap = 1774665000;  // 2026-03-28 03:30, half past two in winter
    EXPECT_EQ(days.text(inTheGap - hour), "2026-03-28 02:30");
    EXPECT_EQ(days.text(days.calendar().dateByAdding(CalendarUnit::day, 1, inTheGap - hour)),
              "2026-03-29 03:30");
}

TEST(CalendarDays, MonthsAreAddedUpToTheLastDay) {
    const Days days("Etc/UTC");
    constexpr Date january = 1706659200;  // 2024-01-31
    EXPECT_EQ(days.text(days.calendar().dateByAdding(CalendarUnit::month, 1, january)), "2024-02-29 00:00");
    EXPECT_EQ(days.text(days.calendar().dateByAdding(CalendarUnit::month, -1, january)), "2023-12-31 00:00");
    EXPECT_EQ(days.text(days.calendar().dateByAdding(CalendarUnit::year, 1, january)), "2025-01-31 00:00");
}

TEST(CalendarDays, LastDayOfALeapYearIsThe366th) {
    const Days days("Etc/UTC");
    constexpr Date newYear = 1735689600;  // 2025-01-01
    EXPECT_EQ(days.calendar().ordinalityOfDay(CalendarUnit::year, newYear - 1), 366);
    EXPECT_EQ(days.calendar().dayCount(CalendarUnit::year, newYear - 1), 366);
    EXPECT_EQ(days.calendar().ordinalityOfDay(CalendarUnit::year, newYear), 1);
    EXPECT_EQ(days.calendar().dayCount(CalendarUnit::year, newYear), 365);
    EXPECT_EQ(days.calendar().ordinalityOfDay(CalendarUnit::month, newYear - 1), 31);
    EXPECT_EQ(days.calendar().component(CalendarUnit::month, newYear - 1), 12);
    EXPECT_EQ(days.calendar().component(CalendarUnit::year, newYear - 1), 2024);
    EXPECT_EQ(days.calendar().component(CalendarUnit::year, newYear), 2025);
    EXPECT_FALSE(days.calendar().isSameMonth(newYear - 1, newYear));
    EXPECT_FALSE(days.calendar().isSameMonth(newYear, newYear + 366 * 24 * hour));
}

TEST(CalendarDays, WeekendsAreTheCountrys) {
    constexpr Date friday = 1795132800;  // 2026-11-20
    constexpr Date day = 24 * hour;
    const auto weekend = [&](const char* locale) {
        const IcuDateEngine engine(locale, {.name = "UTC"});
        std::string days;
        for (int index = 0; index < 7; ++index)
            days += engine.calendar().isInWeekend(friday + index * day) ? 'x' : '-';
        return days;
    };
    EXPECT_EQ(weekend("de_DE"), "-xx----");
    EXPECT_EQ(weekend("ar_EG"), "xx-----");
    EXPECT_EQ(weekend("fa_IR"), "x------");
    EXPECT_EQ(weekend("hi_IN"), "--x----");
}

TEST(CalendarDays, WhatCannotBeToldIsAbsent) {
    const Days days("Etc/UTC");
    const auto& calendar = days.calendar();
    EXPECT_EQ(calendar.dateInterval(CalendarUnit::weekday, 0), std::nullopt);
    EXPECT_EQ(calendar.dateByAdding(CalendarUnit::weekOfYear, 1, 0), std::nullopt);
    for (const Date impossible :
         {std::numeric_limits<double>::quiet_NaN(), std::numeric_limits<double>::infinity()}) {
        EXPECT_EQ(calendar.dateInterval(CalendarUnit::month, impossible), std::nullopt);
        EXPECT_EQ(calendar.dayCount(CalendarUnit::year, impossible), std::nullopt);
        EXPECT_EQ(calendar.ordinalityOfDay(CalendarUnit::year, impossible), std::nullopt);
        EXPECT_EQ(calendar.dateByAdding(CalendarUnit::day, 1, impossible), std::nullopt);
        EXPECT_EQ(calendar.component(CalendarUnit::day, impossible), 0);
        EXPECT_FALSE(calendar.isSameDay(impossible, impossible));
        EXPECT_FALSE(calendar.isSameMonth(impossible, 0));
        EXPECT_FALSE(calendar.isInWeekend(impossible));
    }
    EXPECT_EQ(calendar.dateInterval(CalendarUnit::month, 1e300), std::nullopt);
}

TEST(CalendarDays, FollowTheTimeZone) {
    IcuDateEngine engine("en_GB", {.name = "Europe/Berlin", .file = zoneFile("Europe/Berlin")});
    const auto formatter = engine.makeDateFormatter();
    formatter->setDateFormat("d HH:mm zzzz");
    constexpr Date evening = 1795300200;  // 2026-11-21 22:30 UTC
    EXPECT_EQ(formatter->string(evening), "21 23:30 Central European Standard Time");
    EXPECT_EQ(engine.calendar().component(CalendarUnit::day, evening), 21);
    EXPECT_EQ(engine.formatted(evening, DateStyle::time), "23:30:00");
    engine.setTimeZone({.name = "Asia/Tokyo", .file = zoneFile("Asia/Tokyo")});
    EXPECT_EQ(formatter->string(evening), "22 07:30 Japan Standard Time");
    EXPECT_EQ(engine.calendar().component(CalendarUnit::day, evening), 22);
    EXPECT_EQ(engine.formatted(evening, DateStyle::time), "07:30:00");
}

}  // namespace

}  // namespace velmo
