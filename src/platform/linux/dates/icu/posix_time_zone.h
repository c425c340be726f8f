#pragma once

#include "linux/dates/icu/local_time_type.h"

#include <optional>
#include <string>

namespace velmo {

/// A day that comes every year, and a time on it.
struct YearlyMoment {
    /// From 1.
    int month = 1;
    /// From 1 to 5, the last one; 0 where `day` is a day of the month.
    int week = 0;
    /// Of the week, from 0, Sunday; or of the month, from 1.
    int day = 1;
    /// Seconds after the day's midnight by the clocks as they are set before; may lie beyond the day.
    int time = 7200;
};

/// The rules of a time zone as POSIX writes them into TZ.
struct PosixTimeZone {
    LocalTimeType standard;
    /// Absent where clocks are never changed.
    std::optional<LocalTimeType> daylight;
    YearlyMoment daylightStart;
    YearlyMoment daylightEnd;
};

/// E.g. "CET-1CEST,M3.5.0,M10.5.0/3". Absent where the text is something else.
std::optional<PosixTimeZone> parsePosixTimeZone(const std::string& text);

}  // namespace velmo
