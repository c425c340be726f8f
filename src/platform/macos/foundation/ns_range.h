#pragma once

#include "ns_string.h"

namespace velmo::macos {

struct NSRange {
    static constexpr const char* encoding = "{_NSRange=QQ}";

    NSUInteger location = 0;
    NSUInteger length = 0;
};

template <>
inline constexpr std::string_view frameworkName<NSRange> = "_NSRange";

}  // namespace velmo::macos
