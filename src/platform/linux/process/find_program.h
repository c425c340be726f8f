#pragma once

#include "process_info.h"

#include <optional>
#include <string>

namespace velmo {

/// The executable file of a program that is looked for along the process's PATH, or that has this path.
/// Absent where there is none.
std::optional<std::string> findProgram(const std::string& name, const ProcessInfo& process);

}  // namespace velmo
