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

/// Numbers that the core or a plain constant and the system have in common. Enumerators that our headers
/// declare are read there.
std::vector<SharedNumber> sharedNumbers();

}  // namespace velmo::macos
