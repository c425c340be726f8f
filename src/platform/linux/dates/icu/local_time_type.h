#pragma once

#include <string>

namespace velmo {

/// How clocks of a time zone are set at some time.
struct LocalTimeType {
    /// Seconds east of UTC.
    int offset = 0;
    bool isDaylight = false;
    std::string abbreviation;

    /// No clocks have ever been a day apart from the world's, and ICU writes no such offset.
    bool isPlausible() const {
        constexpr int secondsPerDay = 86400;
        return offset > -secondsPerDay && offset < secondsPerDay;
    }
};

}  // namespace velmo
