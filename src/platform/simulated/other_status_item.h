#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace velmo {

/// A status item of another application.
struct OtherStatusItem {
    /// Names the item in the simulation and keeps its place while it is away.
    std::string identity;
    std::int32_t ownerPID = 0;
    std::string ownerName;
    std::optional<std::string> title;
    /// Points.
    double width = 24;
};

}  // namespace velmo
