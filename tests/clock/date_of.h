#pragma once

#include "platform/run_loop.h"

#include <chrono>

namespace velmo {

/// A moment in UTC.
inline Date dateOf(int year, unsigned month, unsigned day, int hour = 12, int minute = 0, int second = 0) {
    const std::chrono::sys_days start =
        std::chrono::year(year) / std::chrono::month(month) / std::chrono::day(day);
    return static_cast<Date>(std::chrono::seconds(start.time_since_epoch()).count()) + hour * 3600 +
           minute * 60 + second;
}

}  // namespace velmo
