#include "simulated/simulated_calendar.h"

#include <chrono>
#include <cmath>

namespace velmo {

namespace {

using std::chrono::days;
using std::chrono::sys_days;
using std::chrono::year_month_day;

constexpr double secondsPerDay = 86400;
constexpr int daysPerWeek = 7;

sys_days dayOf(Date local) {
    return sys_days(days(static_cast<int>(std::floor(local / secondsPerDay))));
}

year_month_day civil(Date local) {
    return {dayOf(local)};
}

Date startOf(sys_days day) {
    return static_cast<double>(day.time_since_epoch().count()) * secondsPerDay;
}

sys_days firstOf(CalendarUnit unit, const year_month_day& date) {
    const auto month = unit == CalendarUnit::year ? std::chrono::January : date.month();
    return date.year() / month / 1;
}

sys_days firstAfter(CalendarUnit unit, const year_month_day& date) {
    const auto next = unit == CalendarUnit::year
                          ? date.year() / std::chrono::January / 1 + std::chrono::years(1)
                          : date.year() / date.month() / 1 + std::chrono::months(1);
    return next;
}

int weekdayOf(sys_days day) {
    return static_cast<int>(std::chrono::weekday(day).c_encoding()) + 1;
}

int weekOfYear(sys_days day, int firstWeekday) {
    constexpr int monday = 2;
    const auto sinceWeekStart = (weekdayOf(day) - firstWeekday + daysPerWeek) % daysPerWeek;
    if (firstWeekday == monday) {
        constexpr int toThursday = 3;
        const sys_days thursday = day - days(sinceWeekStart) + days(toThursday);
        const sys_days newYear = year_month_day(thursday).year() / std::chrono::January / 1;
        return static_cast<int>((thursday - newYear).count()) / daysPerWeek + 1;
    }
    const sys_days lastOfWeek = day - days(sinceWeekStart) + days(daysPerWeek - 1);
    const sys_days newYear = year_month_day(lastOfWeek).year() / std::chrono::January / 1;
    return static_cast<int>((lastOfWeek - newYear).count()) / daysPerWeek + 1;
}

}  // namespace

std::optional<DateInterval> SimulatedCalendar::dateInterval(CalendarUnit unit, Date date) const {
    if (knowsNothing_)
        return std::nullopt;
    const auto day = civil(date + secondsFromUtc_);
    return DateInterval{startOf(firstOf(unit, day)) - secondsFromUtc_,
                        startOf(firstAfter(unit, day)) - secondsFromUtc_};
}

std::optional<int> SimulatedCalendar::dayCount(CalendarUnit in, Date date) const {
    if (knowsNothing_ || countsNoDays_)
        return std::nullopt;
    const auto day = civil(date + secondsFromUtc_);
    return static_cast<int>((firstAfter(in, day) - firstOf(in, day)).count());
}

std::optional<int> SimulatedCalendar::ordinalityOfDay(CalendarUnit in, Date date) const {
    if (knowsNothing_)
        return std::nullopt;
    const auto day = civil(date + secondsFromUtc_);
    return static_cast<int>((sys_days(day) - firstOf(in, day)).count()) + 1;
}

int SimulatedCalendar::component(CalendarUnit unit, Date date) const {
    const sys_days day = dayOf(date + secondsFromUtc_);
    const year_month_day parts{day};
    switch (unit) {
        case CalendarUnit::day:
            return static_cast<int>(static_cast<unsigned>(parts.day()));
        case CalendarUnit::weekday:
            return weekdayOf(day);
        case CalendarUnit::weekOfYear:
            return weekOfYear(day, firstWeekday_);
        case CalendarUnit::month:
            return static_cast<int>(static_cast<unsigned>(parts.month()));
        case CalendarUnit::year:
            return static_cast<int>(parts.year());
    }
    return 0;
}

std::optional<Date> SimulatedCalendar::dateByAdding(CalendarUnit unit, int value, Date date) const {
    if (knowsNothing_)
        return std::nullopt;
    const Date local = date + secondsFromUtc_;
    if (unit == CalendarUnit::day)
        return date + value * secondsPerDay;
    const auto parts = civil(local);
    const int monthsPerUnit = unit == CalendarUnit::year ? 12 : 1;
    const auto month = parts.year() / parts.month() + std::chrono::months(value * monthsPerUnit);
    const sys_days last = month / std::chrono::last;
    const sys_days moved = std::min(sys_days(month / 1) + (parts.day() - std::chrono::day(1)), last);
    return startOf(moved) + (local - startOf(dayOf(local))) - secondsFromUtc_;
}

std::vector<std::string> SimulatedCalendar::veryShortStandaloneWeekdaySymbols() const {
    return {"S", "M", "T", "W", "T", "F", "S"};
}

bool SimulatedCalendar::isSameDay(Date one, Date other) const {
    return dayOf(one + secondsFromUtc_) == dayOf(other + secondsFromUtc_);
}

bool SimulatedCalendar::isSameMonth(Date one, Date other) const {
    const auto first = civil(one + secondsFromUtc_);
    const auto second = civil(other + secondsFromUtc_);
    return first.year() == second.year() && first.month() == second.month();
}

bool SimulatedCalendar::isInWeekend(Date date) const {
    const int weekday = weekdayOf(dayOf(date + secondsFromUtc_));
    return weekday == 1 || weekday == daysPerWeek;
}

}  // namespace velmo
