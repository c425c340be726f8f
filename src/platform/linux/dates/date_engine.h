#pragma once

#include "dates.h"
#include "linux/dates/time_zone_setting.h"

#include <memory>
#include <string>

namespace velmo {

/// Knows calendars and languages. It is loaded when it is needed first, because what it knows takes room.
class DateEngine {
public:
    virtual ~DateEngine() = default;

    /// The calendar and all formatters follow at once.
    virtual void setTimeZone(const TimeZoneSetting& setting) = 0;
    virtual const Calendar& calendar() const = 0;
    /// The engine outlives its formatters.
    virtual std::unique_ptr<DateFormatter> makeDateFormatter() = 0;
    virtual std::string formatted(Date date, DateStyle style) = 0;
};

/// The name and type of the function that makes a module's engine. `locale` is a name as POSIX has them in
/// LC_TIME, e.g. "de_DE.UTF-8".
inline constexpr const char* dateEngineFunctionName = "velmoMakeDateEngine";
using MakeDateEngine = DateEngine* (*)(const char* locale, const TimeZoneSetting* timeZone);

}  // namespace velmo
