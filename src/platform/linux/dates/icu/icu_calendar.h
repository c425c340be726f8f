#pragma once

#include "dates.h"
#include "linux/dates/icu/date_settings.h"

#include <unicode/calendar.h>

#include <memory>
#include <optional>

namespace velmo {

/// The calendar that people use in the locale.
class IcuCalendar : public Calendar {
public:
    explicit IcuCalendar(const DateSettings& settings) : settings_(settings) {}

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
    /// Set to the time. Null where there is no such calendar, or no such time.
    icu::Calendar* at(Date date) const;
    /// Days are counted by date, so that the length of a day does not matter.
    std::optional<int> dayNumber(Date date) const;

    const DateSettings& settings_;
    mutable std::unique_ptr<icu::Calendar> calendar_;
    mutable int generation_ = -1;
};

}  // namespace velmo
