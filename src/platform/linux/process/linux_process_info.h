#pragma once

#include "process_info.h"

namespace velmo {

class LinuxProcessInfo : public ProcessInfo {
public:
    std::int32_t processIdentifier() const override;
    std::optional<std::string> environment(const std::string& name) const override;
};

/// The name of a running process's program. Absent where there is no such process.
std::optional<std::string> processName(std::int32_t processIdentifier);

}  // namespace velmo
