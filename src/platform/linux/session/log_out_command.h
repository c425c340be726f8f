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

/// What makes the session manager of the running desktop ask the user whether to log out. Absent where no
/// program that we know does so or the one that would is not installed.
std::optional<LogOutCommand> logOutCommand(const ProcessInfo& process);

/// True on the desktop whose session manager is asked on the session's bus.
bool isPlasma(const ProcessInfo& process);

/// What ends the session at once. Absent where there is no login manager.
std::optional<LogOutCommand> endSessionCommand(const ProcessInfo& process);

}  // namespace velmo
