#pragma once

#include "process_info.h"

#include <string>
#include <vector>

namespace velmo {

/// The names by which the running desktop goes, the most particular one first. Empty where it has none.
std::vector<std::string> currentDesktops(const ProcessInfo& process);

}  // namespace velmo
