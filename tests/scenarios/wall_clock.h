#pragma once

#include "platform/run_loop.h"

#include <chrono>
#include <string>

namespace velmo {

/// What an English clock and calendar show at a moment. Reckoned without any platform's calendar.
class WallClock {
public:
    /// Of the time that the clock shows, as if it were UTC.
    explicit WallClock(Date local);

    std::string hour() const { return twoDigits(hour_); }
    std::string hourAndMinute() const { return hour() + ':' + twoDigits(minute_); }
    std::string time() const { return hourAndMinute() + ':' + twoDigits(second_); }
    std::string twelveHourTime() const;
    /// As in "Sat 5 Jul".
    std::string shortDate() const;
    /// As in "Saturday, 5 July 2025".
    std::string fullDate() const;
    /// As in "07/05".
    std::string monthAndDay() const;
    /// As in "It is 2025".
    std::string yearAfterText() const { return "It is " + year(); }
    /// As in "July 2025", so many months later.
    std::string monthAndYear(int monthsLater = 0) const;
    int day() const { return static_cast<int>(static_cast<unsigned>(date_.day())); }
    /// Of a month so many later.
    int dayCount(int monthsLater = 0) const;

private:
    static std::string twoDigits(int number);
    std::string year() const { return std::to_string(static_cast<int>(date_.year())); }
    std::string weekday() const;

    std::chrono::year_month_day date_;
    int hour_ = 0;
    int minute_ = 0;
    int second_ = 0;
};

}  // namespace velmo
