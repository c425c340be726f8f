#pragma once

#include "process_info.h"

#include <optional>
#include <string>
#include <vector>

namespace velmo {

struct LogOutCommand {
    /// With its path.
    std::string program;
    std::vector<std::string> arguments;
};

/// What makes the session manager of the running desktop ask the user whether to log out. Absent where we do
/// not know the desktop, or nothing that would speak to it is installed.
std::optional<LogOutCommand> logOutCommand(const ProcessInfo& process);

/// What ends the session at once. Absent where there is no login manager.
std::optional<LogOutCommand> endSessionCommand(const ProcessInfo& process);

}  // namespace velmo
