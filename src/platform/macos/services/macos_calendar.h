#pragma once

#include "dates.h"
#include "macos/foundation/ns_calendar.h"

namespace velmo::macos {

class MacosCalendar : public Calendar {
public:
    std::optional<DateInterval> dateInterval(CalendarUnit unit, Date date) const override;
    std::optional<int> dayCount(CalendarUnit in, Date date) const override;
    std::optional<int> ordinalityOfDay(CalendarUnit in, Date date) const override;
    int component(CalendarUnit unit, Date date) const override;
    std::optional<Date> dateByAdding(CalendarUnit unit, int value, Date date) const override;
    int firstWeekday() const override;
    std::vector<std::string> veryShortStandaloneWeekdaySymbols() const override;
    bool isSameDay(Date one, Date other) const override;
    bool isSameMonth(Date one, Date other) const override;
    bool isInWeekend(Date date) const override;

private:
    NSCalendar calendar_ = NSCalendar::autoupdatingCurrent();
};

}  // namespace velmo::macos
