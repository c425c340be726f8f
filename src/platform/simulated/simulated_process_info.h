#pragma once

#include "process_info.h"

#include <map>

namespace velmo {

class SimulatedProcessInfo : public ProcessInfo {
public:
    std::int32_t processIdentifier() const override { return processIdentifier_; }
    std::optional<std::string> environment(const std::string& name) const override;

    void setProcessIdentifier(std::int32_t processIdentifier) { processIdentifier_ = processIdentifier; }
    /// Absent: the variable is not set.
    void setEnvironment(const std::string& name, const std::optional<std::string>& value);

private:
    std::int32_t processIdentifier_ = 4242;
    std::map<std::string, std::string> environment_;
};

}  // namespace velmo
