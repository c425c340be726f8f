#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace velmo {

class ProcessInfo {
public:
    virtual ~ProcessInfo() = default;

    virtual std::int32_t processIdentifier() const = 0;
    /// The value of an environment variable. Absent where it is not set; it may be set and empty.
    virtual std::optional<std::string> environment(const std::string& name) const = 0;
};

}  // namespace velmo
