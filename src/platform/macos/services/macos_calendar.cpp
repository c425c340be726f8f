#include "macos_calendar.h"

#include <limits>

namespace velmo::macos {
namespace {

NSCalendarUnit systemUnit(CalendarUnit unit) {
    switch (unit) {
        case CalendarUnit::day:
            return NSCalendarUnit::day;
        case CalendarUnit::weekday:
            return NSCalendarUnit::weekday;
        case CalendarUnit::weekOfYear:
            return NSCalendarUnit::weekOfYear;
        case CalendarUnit::month:
            return NSCalendarUnit::month;
        case CalendarUnit::year:
            break;
    }
    return NSCalendarUnit::year;
}

/// What takes the place of a number where there is none is larger than any.
std::optional<int> knownNumber(NSUInteger number) {
    constexpr NSUInteger largest = std::numeric_limits<int>::max();
    return number > largest ? std::nullopt : std::optional(static_cast<int>(number));
}

}  // namespace

std::optional<DateInterval> MacosCalendar::dateInterval(CalendarUnit unit, Date date) const {
    NSDate start;
    double duration = 0;
    if (!calendar_.rangeOfUnit(systemUnit(unit), start, duration, NSDate::with(date)) || !start)
        return std::nullopt;
    return DateInterval{start.date(), start.date() + duration};
}

std::optional<int> MacosCalendar::dayCount(CalendarUnit in, Date date) const {
    const NSRange range = calendar_.rangeOfUnit(NSCalendarUnit::day, systemUnit(in), NSDate::with(date));
    return knownNumber(range.location) ? knownNumber(range.length) : std::nullopt;
}

std::optional<int> MacosCalendar::ordinalityOfDay(CalendarUnit in, Date date) const {
    return knownNumber(calendar_.ordinalityOfUnit(NSCalendarUnit::day, systemUnit(in), NSDate::with(date)));
}

int MacosCalendar::component(CalendarUnit unit, Date date) const {
    return static_cast<int>(calendar_.component(systemUnit(unit), NSDate::with(date)));
}

std::optional<Date> MacosCalendar::dateByAdding(CalendarUnit unit, int value, Date date) const {
    const NSDate added = calendar_.dateByAdding(systemUnit(unit), value, NSDate::with(date));
    return added ? std::optional(added.date()) : std::nullopt;
}

int MacosCalendar::firstWeekday() const {
    return static_cast<int>(calendar_.firstWeekday());
}

std::vector<std::string> MacosCalendar::veryShortStandaloneWeekdaySymbols() const {
    std::vector<std::string> symbols;
    for (const NSString& symbol : calendar_.veryShortStandaloneWeekdaySymbols().all<NSString>())
        symbols.push_back(symbol.text());
    return symbols;
}

bool MacosCalendar::isSameDay(Date one, Date other) const {
    return calendar_.isSameDay(NSDate::with(one), NSDate::with(other));
}

bool MacosCalendar::isSameMonth(Date one, Date other) const {
    return calendar_.isEqual(NSDate::with(one), NSDate::with(other), NSCalendarUnit::month);
}

bool MacosCalendar::isInWeekend(Date date) const {
    return calendar_.isInWeekend(NSDate::with(date));
}

}  // namespace velmo::macos
