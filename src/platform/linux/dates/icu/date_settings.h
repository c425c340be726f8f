#pragma once

#include "run_loop.h"

#include <unicode/locid.h>
#include <unicode/timezone.h>

#include <memory>

namespace velmo {

/// What calendars and formatters are made from.
struct DateSettings {
    icu::Locale locale;
    std::unique_ptr<icu::TimeZone> timeZone;
    /// Grows with every change of the time zone.
    int generation = 0;
};

/// ICU counts milliseconds.
inline UDate toUDate(Date date) {
    constexpr double millisecondsPerSecond = 1000;
    return date * millisecondsPerSecond;
}

inline Date fromUDate(UDate date) {
    constexpr double millisecondsPerSecond = 1000;
    return date / millisecondsPerSecond;
}

}  // namespace velmo
