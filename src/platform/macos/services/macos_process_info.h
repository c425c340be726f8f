#pragma once

#include "macos/foundation/ns_process_info.h"
#include "process_info.h"

namespace velmo::macos {

class MacosProcessInfo : public ProcessInfo {
public:
    std::int32_t processIdentifier() const override { return process_.processIdentifier(); }
    std::optional<std::string> environment(const std::string& name) const override;

private:
    NSProcessInfo process_ = NSProcessInfo::current();
};

}  // namespace velmo::macos
