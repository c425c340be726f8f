#pragma once

#include "dates.h"

namespace velmo {

/// Takes the calendar's place where none can be had.
class UnknownCalendar : public Calendar {
public:
    std::optional<DateInterval> dateInterval(CalendarUnit /*unit*/, Date /*date*/) const override {
        return {};
    }
    std::optional<int> dayCount(CalendarUnit /*in*/, Date /*date*/) const override { return {}; }
    std::optional<int> ordinalityOfDay(CalendarUnit /*in*/, Date /*date*/) const override { return {}; }
    int component(CalendarUnit /*unit*/, Date /*date*/) const override { return 0; }
    std::optional<Date> dateByAdding(CalendarUnit /*unit*/, int /*value*/, Date /*date*/) const override {
        return {};
    }
    int firstWeekday() const override { return 1; }
    std::vector<std::string> veryShortStandaloneWeekdaySymbols() const override {
        return {"S", "M", "T", "W", "T", "F", "S"};
    }
    bool isSameDay(Date /*one*/, Date /*other*/) const override { return false; }
    bool isSameMonth(Date /*one*/, Date /*other*/) const override { return false; }
    bool isInWeekend(Date /*date*/) const override { return false; }
};

}  // namespace velmo
