#pragma once

#include "run_loop.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace velmo {

/// From `start` on and before `end`.
struct DateInterval {
    Date start = 0;
    Date end = 0;

    bool operator==(const DateInterval&) const = default;
};

enum class CalendarUnit { day, weekday, weekOfYear, month, year };

/// The user's calendar. It follows changes of the locale, the first weekday and the time zone. What the
/// calendar cannot tell is absent.
class Calendar {
public:
    virtual ~Calendar() = default;

    /// The month or year that contains the date.
    virtual std::optional<DateInterval> dateInterval(CalendarUnit unit, Date date) const = 0;
    /// How many days the month or year that contains the date has.
    virtual std::optional<int> dayCount(CalendarUnit in, Date date) const = 0;
    /// Which day of the month or year the date lies in, from 1.
    virtual std::optional<int> ordinalityOfDay(CalendarUnit in, Date date) const = 0;
    /// Weekdays are numbered from 1, Sunday.
    virtual int component(CalendarUnit unit, Date date) const = 0;
    /// The date `value` days, months or years later, at the same time of day where there is such a time. From
    /// the start of a day it leads to the start of a day.
    virtual std::optional<Date> dateByAdding(CalendarUnit unit, int value, Date date) const = 0;
    /// From 1, Sunday, to 7.
    virtual int firstWeekday() const = 0;
    /// Seven, Sunday first.
    virtual std::vector<std::string> veryShortStandaloneWeekdaySymbols() const = 0;
    virtual bool isSameDay(Date one, Date other) const = 0;
    /// True where both lie in the same month of the same year.
    virtual bool isSameMonth(Date one, Date other) const = 0;
    virtual bool isInWeekend(Date date) const = 0;
};

/// Writes dates by a pattern of Unicode date field symbols, in the user's locale and time zone.
class DateFormatter {
public:
    virtual ~DateFormatter() = default;

    virtual void setDateFormat(const std::string& pattern) = 0;
    /// Absent where the pattern cannot be used.
    virtual std::optional<std::string> string(Date date) const = 0;
};

/// Which parts of a date are shown; their order and what stands between them is the locale's.
enum class DateStyle {
    /// Hour with the locale's marker of the half of the day, minute, second.
    time,
    /// Weekday, day, month and year, all in full.
    fullDate,
    /// Month in full, and year.
    monthAndYear,
};

/// A running notification; destroying it ends that.
class NotificationObserver {
public:
    virtual ~NotificationObserver() = default;
};

/// Dates as the user writes and counts them.
class Dates {
public:
    virtual ~Dates() = default;

    /// Outlives everybody who uses it.
    virtual const Calendar& currentCalendar() const = 0;
    virtual std::unique_ptr<DateFormatter> makeDateFormatter() = 0;
    virtual std::string formatted(Date date, DateStyle style) const = 0;
    /// Calls the handler on the main thread after the system's time zone has changed.
    virtual std::unique_ptr<NotificationObserver> observeTimeZone(std::function<void()> handler) = 0;
};

}  // namespace velmo
