#pragma once

#include "dates.h"
#include "linux/dates/date_engine.h"
#include "linux/dates/time_zone_watch.h"
#include "linux/dates/unknown_calendar.h"
#include "linux/listeners.h"

#include <memory>
#include <string>

namespace velmo {

/// The name of the locale that dates are written in, as POSIX has it: of LC_ALL, LC_TIME and LANG the first
/// that is set to something.
std::string dateLocaleFromEnvironment();

/// Dates in the user's locale and the system's time zone. Loads the engine once somebody asks for a date.
class LinuxDates : public Dates {
public:
    explicit LinuxDates(EventLoop& loop, TimeZoneFiles files = {});
    ~LinuxDates() override;

    const Calendar& currentCalendar() const override;
    std::unique_ptr<DateFormatter> makeDateFormatter() override;
    /// Empty where the engine is missing.
    std::string formatted(Date date, DateStyle style) const override;
    std::unique_ptr<NotificationObserver> observeTimeZone(std::function<void()> handler) override;

private:
    class Formatter;
    class Observer;

    /// Null where the module is missing.
    DateEngine* engine() const;
    void readTimeZone();
    void observerEnded();

    EventLoop& loop_;
    TimeZoneFiles files_;
    TimeZoneSetting timeZone_;
    UnknownCalendar unknownCalendar_;
    mutable std::unique_ptr<DateEngine> engine_;
    mutable bool tried_ = false;
    Listeners observers_;
    int observerCount_ = 0;
    std::unique_ptr<TimeZoneWatch> watch_;
};

}  // namespace velmo
