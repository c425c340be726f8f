#pragma once

#include "ns_array.h"
#include "ns_calendar_unit.h"
#include "ns_date.h"
#include "ns_range.h"

namespace velmo::macos {

class NSCalendar : public ClassOf<NSCalendar, "NSCalendar", NSObject> {
public:
    /// Follows what the user changes.
    static NSCalendar autoupdatingCurrent() {
        return sendToClass<NSCalendar, "autoupdatingCurrentCalendar">();
    }

    /// Where the unit that contains the date starts, and how many seconds it lasts. False where it cannot
    /// tell.
    bool rangeOfUnit(NSCalendarUnit unit, NSDate& start, double& interval, const NSDate& date) const {
        Id found = nullptr;
        const bool isKnown =
            send<bool, "rangeOfUnit:startDate:interval:forDate:">(unit, &found, &interval, date);
        start = Object::share<NSDate>(found);
        return isKnown;
    }
    NSRange rangeOfUnit(NSCalendarUnit smaller, NSCalendarUnit larger, const NSDate& date) const {
        return send<NSRange, "rangeOfUnit:inUnit:forDate:">(smaller, larger, date);
    }
    NSUInteger ordinalityOfUnit(NSCalendarUnit smaller, NSCalendarUnit larger, const NSDate& date) const {
        return send<NSUInteger, "ordinalityOfUnit:inUnit:forDate:">(smaller, larger, date);
    }
    NSInteger component(NSCalendarUnit unit, const NSDate& date) const {
        return send<NSInteger, "component:fromDate:">(unit, date);
    }
    NSDate dateByAdding(NSCalendarUnit unit, NSInteger value, const NSDate& date) const {
        return send<NSDate, "dateByAddingUnit:value:toDate:options:">(unit, value, date,
                                                                      NSCalendarOptions::none);
    }
    NSUInteger firstWeekday() const { return send<NSUInteger, "firstWeekday">(); }
    NSArray veryShortStandaloneWeekdaySymbols() const {
        return send<NSArray, "veryShortStandaloneWeekdaySymbols">();
    }
    bool isSameDay(const NSDate& one, const NSDate& other) const {
        return send<bool, "isDate:inSameDayAsDate:">(one, other);
    }
    bool isEqual(const NSDate& one, const NSDate& other, NSCalendarUnit granularity) const {
        return send<bool, "isDate:equalToDate:toUnitGranularity:">(one, other, granularity);
    }
    bool isInWeekend(const NSDate& date) const { return send<bool, "isDateInWeekend:">(date); }
};

}  // namespace velmo::macos
