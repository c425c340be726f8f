#include "platform/macos/doubles/calendar_methods.h"

#include "macos/foundation/ns_calendar.h"
#include "macos/foundation/ns_date_formatter.h"
#include "platform/macos/doubles/added_method.h"

#include <cmath>

namespace velmo::macos::doubles {
namespace {

constexpr NSUInteger NSNotFound = 0x7fffffffffffffff;

constexpr NSUInteger yearUnit = 1 << 2;
constexpr NSUInteger monthUnit = 1 << 3;
constexpr NSUInteger dayUnit = 1 << 4;
constexpr NSUInteger weekdayUnit = 1 << 9;
constexpr NSUInteger weekOfYearUnit = 1 << 13;
/// What weeks of the year are called by calendars that are as old as GNUstep's.
constexpr NSUInteger weekUnit = 1 << 8;

class NSDateComponents : public ClassOf<NSDateComponents, "NSDateComponents", NSObject> {
public:
    static NSDateComponents create() { return make<"init">(); }

    NSInteger year() const { return send<NSInteger, "year">(); }
    NSInteger month() const { return send<NSInteger, "month">(); }
    NSInteger day() const { return send<NSInteger, "day">(); }
    NSInteger weekday() const { return send<NSInteger, "weekday">(); }
    NSInteger week() const { return send<NSInteger, "week">(); }
    void setYear(NSInteger value) const { send<void, "setYear:">(value); }
    void setMonth(NSInteger value) const { send<void, "setMonth:">(value); }
    void setDay(NSInteger value) const { send<void, "setDay:">(value); }
};

NSDateComponents componentsOf(const NSCalendar& calendar, NSUInteger units, const NSDate& date) {
    return Message<"NSCalendar", false, "components:fromDate:", NSDateComponents, NSUInteger, NSDate>::send(
        calendar.get(), units, date);
}

NSInteger component(const NSCalendar& calendar, NSUInteger unit, const NSDate& date) {
    const NSDateComponents components =
        componentsOf(calendar, unit == weekOfYearUnit ? weekUnit : unit, date);
    switch (unit) {
        case yearUnit:
            return components.year();
        case monthUnit:
            return components.month();
        case dayUnit:
            return components.day();
        case weekdayUnit:
            return components.weekday();
        default:
            return components.week();
    }
}

NSDate dateByAdding(const NSCalendar& calendar, NSUInteger unit, NSInteger value, const NSDate& date,
                    NSUInteger options) {
    const NSDateComponents added = NSDateComponents::create();
    if (unit == yearUnit)
        added.setYear(value);
    else if (unit == monthUnit)
        added.setMonth(value);
    else
        added.setDay(value);
    return Message<"NSCalendar", false, "dateByAddingComponents:toDate:options:", NSDate, NSDateComponents,
                   NSDate, NSUInteger>::send(calendar.get(), added, date, options);
}

NSArray veryShortSymbols(const NSCalendar& /*calendar*/) {
    return Message<"NSDateFormatter", false, "veryShortStandaloneWeekdaySymbols", NSArray>::send(
        NSDateFormatter::create().get());
}

bool isSameDay(const NSCalendar& calendar, const NSDate& one, const NSDate& other) {
    const NSDateComponents first = componentsOf(calendar, yearUnit | monthUnit | dayUnit, one);
    const NSDateComponents second = componentsOf(calendar, yearUnit | monthUnit | dayUnit, other);
    return first.year() == second.year() && first.month() == second.month() && first.day() == second.day();
}

bool isEqualToMonth(const NSCalendar& calendar, const NSDate& one, const NSDate& other,
                    NSUInteger granularity) {
    const NSDateComponents first = componentsOf(calendar, yearUnit | monthUnit, one);
    const NSDateComponents second = componentsOf(calendar, yearUnit | monthUnit, other);
    return granularity == monthUnit && first.year() == second.year() && first.month() == second.month();
}

bool isInWeekend(const NSCalendar& calendar, const NSDate& date) {
    const NSInteger weekday = component(calendar, weekdayUnit, date);
    return weekday == 1 || weekday == 7;
}

NSDate startOfDay(const NSCalendar& calendar, NSInteger year, NSInteger month, NSInteger day) {
    const NSDateComponents components = NSDateComponents::create();
    components.setYear(year);
    components.setMonth(month);
    components.setDay(day);
    return Message<"NSCalendar", false, "dateFromComponents:", NSDate, NSDateComponents>::send(calendar.get(),
                                                                                               components);
}

NSCalendar currentCalendar(const NSCalendar& calendarClass) {
    return Message<"NSCalendar", true, "currentCalendar", NSCalendar>::send(calendarClass.get());
}

struct Interval {
    Date start = 0;
    Date end = 0;
    Date startOfDate = 0;
};

/// Of the month or year that contains the date.
Interval intervalOf(const NSCalendar& calendar, NSUInteger unit, const NSDate& date) {
    const NSDateComponents components = componentsOf(calendar, yearUnit | monthUnit | dayUnit, date);
    const NSInteger year = components.year();
    const NSInteger month = unit == monthUnit ? components.month() : 1;
    const bool isLast = unit == yearUnit || month == 12;
    return {.start = startOfDay(calendar, year, month, 1).date(),
            .end = startOfDay(calendar, isLast ? year + 1 : year, isLast ? 1 : month + 1, 1).date(),
            .startOfDate = startOfDay(calendar, year, components.month(), components.day()).date()};
}

/// Days may be an hour longer or shorter.
NSUInteger daysBetween(Date start, Date end) {
    return static_cast<NSUInteger>(std::llround((end - start) / 86400));
}

bool rangeOfUnit(const NSCalendar& calendar, NSUInteger unit, Id* start, double* length, const NSDate& date) {
    if (unit != monthUnit && unit != yearUnit)
        return false;
    const Interval interval = intervalOf(calendar, unit, date);
    *start = NSDate::with(interval.start).leaveToPool();
    *length = interval.end - interval.start;
    return true;
}

NSRange rangeInUnit(const NSCalendar& calendar, NSUInteger smaller, NSUInteger larger, const NSDate& date) {
    if (smaller != dayUnit || (larger != monthUnit && larger != yearUnit))
        return {NSNotFound, 0};
    const Interval interval = intervalOf(calendar, larger, date);
    return {1, daysBetween(interval.start, interval.end)};
}

NSUInteger ordinality(const NSCalendar& calendar, NSUInteger smaller, NSUInteger larger, const NSDate& date) {
    if (smaller != dayUnit || (larger != monthUnit && larger != yearUnit))
        return NSNotFound;
    const Interval interval = intervalOf(calendar, larger, date);
    return daysBetween(interval.start, interval.startOfDate) + 1;
}

}  // namespace

void addCalendarMethods() {
    const RawClass calendar = classNamed<"NSCalendar">();
    // That of GNUstep falls over itself when the defaults change.
    setMethod<"autoupdatingCurrentCalendar", &currentCalendar>(metaclassOf(calendar));
    // GNUstep has these, and they answer nothing.
    setMethod<"rangeOfUnit:startDate:interval:forDate:", &rangeOfUnit>(calendar);
    setMethod<"rangeOfUnit:inUnit:forDate:", &rangeInUnit>(calendar);
    setMethod<"ordinalityOfUnit:inUnit:forDate:", &ordinality>(calendar);
    setMethod<"component:fromDate:", &component>(calendar);
    setMethod<"dateByAddingUnit:value:toDate:options:", &dateByAdding>(calendar);
    setMethod<"veryShortStandaloneWeekdaySymbols", &veryShortSymbols>(calendar);
    setMethod<"isDate:inSameDayAsDate:", &isSameDay>(calendar);
    setMethod<"isDate:equalToDate:toUnitGranularity:", &isEqualToMonth>(calendar);
    setMethod<"isDateInWeekend:", &isInWeekend>(calendar);
}

}  // namespace velmo::macos::doubles
