#include "icu_calendar.h"

#include <unicode/dtfmtsym.h>

#include <cmath>
#include <utility>

namespace velmo {

namespace {

constexpr int daysPerWeek = 7;

std::optional<UCalendarDateFields> fieldOf(CalendarUnit unit) {
    switch (unit) {
        case CalendarUnit::day:
            return UCAL_DATE;
        case CalendarUnit::month:
            return UCAL_MONTH;
        case CalendarUnit::year:
            return UCAL_YEAR;
        case CalendarUnit::weekday:
        case CalendarUnit::weekOfYear:
            break;
    }
    return std::nullopt;
}

/// The field that is 1 on the unit's first day.
std::optional<UCalendarDateFields> dayFieldOf(CalendarUnit unit) {
    if (unit == CalendarUnit::month)
        return UCAL_DATE;
    if (unit == CalendarUnit::year)
        return UCAL_DAY_OF_YEAR;
    return std::nullopt;
}

/// The first instant of the calendar's day: midnight where there is one, the first of two where clocks are
/// set back over it, and what follows the gap where they are set forward over it.
UDate startOfDay(icu::Calendar& calendar, UErrorCode& status) {
    for (const auto field : {UCAL_HOUR_OF_DAY, UCAL_MINUTE, UCAL_SECOND, UCAL_MILLISECOND})
        calendar.set(field, 0);
    return calendar.getTime(status);
}

}  // namespace

icu::Calendar* IcuCalendar::at(Date date) const {
    UErrorCode status = U_ZERO_ERROR;
    if (std::exchange(generation_, settings_.generation) != settings_.generation) {
        calendar_.reset(icu::Calendar::createInstance(*settings_.timeZone, settings_.locale, status));
        if (U_FAILURE(status))
            calendar_.reset();
        else
            calendar_->setRepeatedWallTimeOption(UCAL_WALLTIME_FIRST);
    }
    if (!calendar_ || !std::isfinite(date))
        return nullptr;
    calendar_->setTime(toUDate(date), status);
    return U_SUCCESS(status) ? calendar_.get() : nullptr;
}

std::optional<int> IcuCalendar::dayNumber(Date date) const {
    auto* calendar = at(date);
    UErrorCode status = U_ZERO_ERROR;
    const int number = calendar ? calendar->get(UCAL_JULIAN_DAY, status) : 0;
    return calendar && U_SUCCESS(status) ? std::optional(number) : std::nullopt;
}

std::optional<DateInterval> IcuCalendar::dateInterval(CalendarUnit unit, Date date) const {
    const auto field = fieldOf(unit);
    const auto dayField = dayFieldOf(unit);
    auto* calendar = at(date);
    if (!field || !dayField || !calendar)
        return std::nullopt;
    UErrorCode status = U_ZERO_ERROR;
    calendar->set(*dayField, 1);
    const UDate start = startOfDay(*calendar, status);
    calendar->add(*field, 1, status);
    const UDate end = startOfDay(*calendar, status);
    if (U_FAILURE(status) || start > toUDate(date) || end <= toUDate(date))
        return std::nullopt;
    return DateInterval{fromUDate(start), fromUDate(end)};
}

std::optional<int> IcuCalendar::dayCount(CalendarUnit in, Date date) const {
    const auto interval = dateInterval(in, date);
    const auto first = interval ? dayNumber(interval->start) : std::nullopt;
    const auto next = interval ? dayNumber(interval->end) : std::nullopt;
    return first && next ? std::optional(*next - *first) : std::nullopt;
}

std::optional<int> IcuCalendar::ordinalityOfDay(CalendarUnit in, Date date) const {
    const auto interval = dateInterval(in, date);
    const auto first = interval ? dayNumber(interval->start) : std::nullopt;
    const auto day = dayNumber(date);
    return first && day ? std::optional(*day - *first + 1) : std::nullopt;
}

int IcuCalendar::component(CalendarUnit unit, Date date) const {
    auto* calendar = at(date);
    if (!calendar)
        return 0;
    UErrorCode status = U_ZERO_ERROR;
    switch (unit) {
        case CalendarUnit::day:
            return calendar->get(UCAL_DATE, status);
        case CalendarUnit::weekday:
            return calendar->get(UCAL_DAY_OF_WEEK, status);
        case CalendarUnit::weekOfYear:
            return calendar->get(UCAL_WEEK_OF_YEAR, status);
        case CalendarUnit::month:
            return calendar->get(UCAL_MONTH, status) + 1;
        case CalendarUnit::year:
            return calendar->get(UCAL_YEAR, status);
    }
    return 0;
}

std::optional<Date> IcuCalendar::dateByAdding(CalendarUnit unit, int value, Date date) const {
    const auto field = fieldOf(unit);
    auto* calendar = at(date);
    if (!field || !calendar)
        return std::nullopt;
    UErrorCode status = U_ZERO_ERROR;
    const bool fromStart = startOfDay(*calendar, status) == toUDate(date);
    calendar->setTime(toUDate(date), status);
    calendar->add(*field, value, status);
    // A day that began at one o'clock is no reason to be late on the others.
    const UDate result = fromStart ? startOfDay(*calendar, status) : calendar->getTime(status);
    return U_SUCCESS(status) ? std::optional(fromUDate(result)) : std::nullopt;
}

int IcuCalendar::firstWeekday() const {
    UErrorCode status = U_ZERO_ERROR;
    const auto* calendar = at(0);
    return calendar ? calendar->getFirstDayOfWeek(status) : UCAL_SUNDAY;
}

std::vector<std::string> IcuCalendar::veryShortStandaloneWeekdaySymbols() const {
    UErrorCode status = U_ZERO_ERROR;
    const icu::DateFormatSymbols symbols(settings_.locale, status);
    int count = 0;
    const auto* names =
        symbols.getWeekdays(count, icu::DateFormatSymbols::STANDALONE, icu::DateFormatSymbols::NARROW);
    std::vector<std::string> result(daysPerWeek);
    // As the weekdays' numbers: the first one is not used.
    for (int day = UCAL_SUNDAY; U_SUCCESS(status) && day <= daysPerWeek && day < count; ++day)
        names[day].toUTF8String(result.at(static_cast<std::size_t>(day - UCAL_SUNDAY)));
    return result;
}

bool IcuCalendar::isSameDay(Date one, Date other) const {
    const auto day = dayNumber(one);
    return day && day == dayNumber(other);
}

bool IcuCalendar::isSameMonth(Date one, Date other) const {
    const auto month = dateInterval(CalendarUnit::month, one);
    return month && month == dateInterval(CalendarUnit::month, other);
}

bool IcuCalendar::isInWeekend(Date date) const {
    const auto* calendar = at(date);
    UErrorCode status = U_ZERO_ERROR;
    return calendar && calendar->isWeekend(toUDate(date), status) && U_SUCCESS(status);
}

}  // namespace velmo
