#pragma once

#include "ns_string.h"

#include <cstdint>
#include <vector>

namespace velmo::macos {

class NSData : public ClassOf<NSData, "NSData", NSObject> {
public:
    static NSData from(const std::vector<std::uint8_t>& bytes);
    std::vector<std::uint8_t> bytes() const;
};

}  // namespace velmo::macos
