#pragma once

#include <string>

namespace velmo {

/// How clocks of a time zone are set at some time.
struct LocalTimeType {
    /// Seconds east of UTC.
    int offset = 0;
    bool isDaylight = false;
    std::string abbreviation;
};

}  // namespace velmo
