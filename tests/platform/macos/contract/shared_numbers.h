#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace velmo::macos {

struct SharedNumber {
    /// Of the system. Empty for a constant that belongs to none.
    std::string enumeration;
    std::string member;
    std::int64_t number = 0;
};

/// Numbers that the core and the system have in common.
std::vector<SharedNumber> sharedNumbers();

}  // namespace velmo::macos
