#pragma once

#include "dates.h"

namespace velmo {

/// The Gregorian calendar at a chosen distance from UTC, with weekends on Saturday and Sunday. Weeks are
/// numbered as in ISO 8601 where they begin on Monday, and else from the week of the first of January.
class SimulatedCalendar : public Calendar {
public:
    std::optional<DateInterval> dateInterval(CalendarUnit unit, Date date) const override;
    std::optional<int> dayCount(CalendarUnit in, Date date) const override;
    std::optional<int> ordinalityOfDay(CalendarUnit in, Date date) const override;
    int component(CalendarUnit unit, Date date) const override;
    std::optional<Date> dateByAdding(CalendarUnit unit, int value, Date date) const override;
    int firstWeekday() const override { return firstWeekday_; }
    std::vector<std::string> veryShortStandaloneWeekdaySymbols() const override;
    bool isSameDay(Date one, Date other) const override;
    bool isSameMonth(Date one, Date other) const override;
    bool isInWeekend(Date date) const override;

    /// From 1, Sunday, to 7.
    void setFirstWeekday(int weekday) { firstWeekday_ = weekday; }
    void setSecondsFromUtc(Seconds seconds) { secondsFromUtc_ = seconds; }
    Seconds secondsFromUtc() const { return secondsFromUtc_; }
    /// From now on the calendar cannot tell anything that may be absent.
    void setKnowsNothing(bool knowsNothing) { knowsNothing_ = knowsNothing; }
    /// The same of how many days there are.
    void setCountsNoDays(bool countsNoDays) { countsNoDays_ = countsNoDays; }

private:
    int firstWeekday_ = 1;
    Seconds secondsFromUtc_ = 0;
    bool knowsNothing_ = false;
    bool countsNoDays_ = false;
};

}  // namespace velmo
