#pragma once

#include "ns_string.h"

namespace velmo::macos {

enum class NSCalendarUnit : NSUInteger {
    year = 1 << 2,
    month = 1 << 3,
    day = 1 << 4,
    weekday = 1 << 9,
    weekOfYear = 1 << 13,
};

enum class NSCalendarOptions : NSUInteger { none = 0 };

template <>
inline constexpr std::string_view frameworkName<NSCalendarUnit> = "NSCalendarUnit";
template <>
inline constexpr std::string_view frameworkName<NSCalendarOptions> = "NSCalendarOptions";

}  // namespace velmo::macos
