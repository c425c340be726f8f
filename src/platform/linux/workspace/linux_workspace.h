#pragma once

#include "process_info.h"
#include "workspace.h"

namespace velmo {

/// Opens places of the system's settings in the running desktop's own settings, where it has some, and other
/// addresses as the desktop does.
class LinuxWorkspace : public Workspace {
public:
    explicit LinuxWorkspace(const ProcessInfo& process) : process_(process) {}

    void open(const std::string& address) override;

private:
    const ProcessInfo& process_;
};

}  // namespace velmo
